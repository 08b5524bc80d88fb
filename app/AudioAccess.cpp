#include "app/AudioAccess.h"

#include "audio/AudioPermission.h"

#include <utility>

namespace fadewell {
namespace {

/// `answered` on the main queue, as long as somebody holds it.
AudioAccess::Answered onQueue(const std::shared_ptr<SerialQueue>& mainQueue,
                              const std::shared_ptr<AudioAccess::Answered>& answered)
{
    return [mainQueue, weak = std::weak_ptr(answered)](bool isAllowed) {
        mainQueue->async([weak, isAllowed] {
            if (const auto told = weak.lock()) {
                (*told)(isAllowed);
            }
        });
    };
}

} // namespace

AudioAccess::AudioAccess(EngineContext context, std::shared_ptr<SerialQueue> mainQueue)
    : context_(std::move(context))
    , mainQueue_(std::move(mainQueue))
{}

const std::shared_ptr<SerialQueue>& AudioAccess::queue()
{
    if (!queue_) {
        queue_ = context_.makeQueue("app.fadewell.permission");
    }
    return queue_;
}

Subscription AudioAccess::check(Answered answered)
{
    auto held = std::make_shared<Answered>(std::move(answered));
    queue()->async([hardware = context_.hardware, answer = onQueue(mainQueue_, held)] {
        answer(AudioPermission::check(*hardware));
    });
    return Subscription([held]() mutable { held.reset(); });
}

Subscription AudioAccess::request(double timeout, Answered answered)
{
    auto held = std::make_shared<Answered>(std::move(answered));
    const auto running = std::make_shared<Timer>(); // touched on the queue only
    queue()->async([context = context_,
                    queue = queue(),
                    timeout,
                    running,
                    answer = onQueue(mainQueue_, held)] {
        *running = AudioPermission::request(context, queue, timeout, answer);
    });
    return Subscription([queue = queue(), running, held]() mutable {
        held.reset();
        queue->async([running] { running->cancel(); });
    });
}

} // namespace fadewell
