#include "platform/linux/supervision/HangJudge.h"

#include <utility>

namespace fadewell {

HangJudge::Verdict HangJudge::tick(const Heartbeat::Reading& reading)
{
    if (!reading.isWatched) {
        *this = {};
        return Verdict::idle;
    }
    const auto last = std::exchange(last_, reading);
    const bool isInside = reading.entered != reading.left;
    const bool isAlive =
        !last || reading.left != last->left || (!isInside && reading.answers != last->answers);
    quietTicks_ = isAlive ? 0 : quietTicks_ + 1;
    if (isAlive) {
        return Verdict::alive;
    }
    return quietTicks_ < mostQuietTicks ? Verdict::quiet : Verdict::hung;
}

} // namespace fadewell
