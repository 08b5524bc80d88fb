#pragma once

#include "audio/EngineContext.h"
#include "base/Subscription.h"

#include <functional>
#include <memory>

namespace fadewell {

/// Finds out whether sound may be captured, and asks for it, away from the main queue: the system
/// may take its time. [main queue]
class AudioAccess final {
public:
    /// Called on the main queue.
    using Answered = std::function<void(bool isAllowed)>;

    AudioAccess(EngineContext context, std::shared_ptr<SerialQueue> mainQueue);

    /// Asks without a question to the user. No answer comes after the subscription died.
    [[nodiscard]] Subscription check(Answered answered);

    /// Lets the system ask the user, for at most `timeout` seconds. The end of the subscription
    /// takes the question back.
    [[nodiscard]] Subscription request(double timeout, Answered answered);

private:
    /// A queue of its own, from the first use on.
    [[nodiscard]] const std::shared_ptr<SerialQueue>& queue();

    EngineContext context_;
    std::shared_ptr<SerialQueue> mainQueue_;
    std::shared_ptr<SerialQueue> queue_;
};

} // namespace fadewell
