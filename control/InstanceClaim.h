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

    /// What a further start of the program asks of the running instance.
    enum class Request {
        none,
        reopen,
        show
    };

    /// Empty when the running instance does what it is asked; otherwise why it doesn't, for people.
    /// The token lets its window take the keyboard; empty where the desktop has no such thing.
    [[nodiscard]] QString askOther(Request request, const QString& activationToken);

private:
    QDBusConnection connection_;
};

} // namespace fadewell
