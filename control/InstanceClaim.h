#pragma once

#include <QDBusConnection>

namespace fadewell {

/// The program's name on the bus, which one instance holds. [main thread]
class InstanceClaim final {
public:
    enum class Outcome {
        claimed,
        taken, ///< by an instance that runs already
        failed ///< the bus did not answer as it should
    };

    explicit InstanceClaim(QDBusConnection connection)
        : connection_(std::move(connection))
    {}

    /// Whether an instance runs; `claim` decides, this spares a second start its preparations.
    [[nodiscard]] bool isTaken() const;

    /// Takes the name, never from another and never to be taken away. The objects must be on the
    /// bus already.
    [[nodiscard]] Outcome claim();

    /// Tells the running instance that the program was started again; false when it didn't answer.
    [[nodiscard]] bool reopenOther();

private:
    QDBusConnection connection_;
};

} // namespace fadewell
