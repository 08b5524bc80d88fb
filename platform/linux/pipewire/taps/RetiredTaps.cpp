#include "platform/linux/pipewire/taps/RetiredTaps.h"

#include <utility>

namespace fadewell::pipewire {
namespace {

// A usual quantum and the way back to full level: only then does the direct path sound the same.
constexpr double returnSeconds = 0.040;

// The session manager needs a few milliseconds to move a stream; a hanging one must not keep us.
constexpr double moveSeconds = 0.300;

// No cycle is this long: whatever keeps the quiet moment away, the app goes back.
constexpr double latestSeconds = 0.200;

} // namespace

void RetiredTaps::add(AudioObjectID tap, std::unique_ptr<TapStreams> streams, double now)
{
    if (!streams) {
        return;
    }
    const double wait = streams->isStreaming() ? returnSeconds : 0;
    retired_.push_back(
        {tap, std::move(streams), now + wait, now + wait + latestSeconds + moveSeconds, false});
    tick(now);
}

void RetiredTaps::addReplaced(std::unique_ptr<TapStreams> streams, double now)
{
    if (streams) {
        retired_.push_back({0, std::move(streams), now, now + moveSeconds, true});
    }
}

void RetiredTaps::tick(double now)
{
    for (auto& retired : retired_) {
        if (!retired.isReleased && now >= retired.releaseAt &&
            (now >= retired.releaseAt + latestSeconds || isQuietMoment_(*retired.streams)))
        {
            release(retired);
        }
    }
    std::erase_if(retired_, [&](const Retired& retired) {
        return retired.isReleased &&
               (now >= retired.endAt || (isLeft(retired) && isQuietMoment_(*retired.streams)));
    });
}

void RetiredTaps::release(Retired& retired)
{
    for (const auto node : router_.attachedTo(retired.tap)) {
        router_.release(node, retired.tap);
    }
    retired.isReleased = true;
}

bool RetiredTaps::isLeft(const Retired& retired) const
{
    return graph_.linksBetween(SPA_ID_INVALID, retired.streams->captureNode()).empty();
}

} // namespace fadewell::pipewire
