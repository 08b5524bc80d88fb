#pragma once

#include <QString>

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <vector>

namespace fadewell {

/// Lets only callers of one user through. [main thread]
///
/// Each caller is looked up once: the bus never gives a unique name to anybody else. Answers keep
/// the order of the questions of one caller.
class CallerCheck final {
public:
    using UserID = unsigned int;
    /// Asks the bus for the user behind a unique name; answers later or at once, absent on failure.
    using Lookup = std::function<void(const QString& caller,
                                      std::function<void(std::optional<UserID>)> answer)>;

    CallerCheck(UserID allowed, Lookup lookup);

    void check(const QString& caller, std::function<void(bool isAllowed)> answer);

private:
    struct State;
    std::shared_ptr<State> state_;
    Lookup lookup_;
};

} // namespace fadewell
