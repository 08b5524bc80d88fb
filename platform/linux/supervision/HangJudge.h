#pragma once

#include "platform/linux/supervision/Heartbeat.h"

#include <optional>

namespace fadewell {

/// Decides from a program's signs of life whether it hangs and silences others. A pure value: the
/// time is the number of ticks, so that a machine that sleeps or stutters accuses nobody.
///
/// A program is alive while its callbacks come and go; between callbacks, when the sound itself may
/// be standing still, an answer of its loop will do.
class HangJudge final {
public:
    enum class Verdict {
        idle, ///< nothing of it can be heard: no tick is needed until that changes
        alive,
        quiet, ///< no sign since the last tick: ask it
        hung,  ///< as long as it is so, at every tick
    };

    /// Between two ticks while a program is watched, in milliseconds.
    static constexpr int tickLength = 125;
    /// Quiet ticks in a row that make a hang. Of a second that nobody may be silenced for, they
    /// leave at least a quarter for the way back to the output.
    static constexpr int mostQuietTicks = 5;

    Verdict tick(const Heartbeat::Reading& reading);

private:
    std::optional<Heartbeat::Reading> last_; ///< none while idle
    int quietTicks_ = 0;
};

} // namespace fadewell
