#pragma once

#include "platform/linux/pipewire/Connection.h"

#include <pipewire/pipewire.h>

#include <functional>
#include <utility>

namespace fadewell::pipewire {

/// A timer on the connection's loop thread; costs nothing while it is off. Belongs to the
/// connection's lock, which is held while it fires.
class LoopTimer final {
public:
    LoopTimer(Connection& connection, std::function<void()> fired)
        : connection_(connection)
        , fired_(std::move(fired))
        , source_(pw_loop_add_timer(connection.loop(), onTimer, this))
    {}
    ~LoopTimer() { pw_loop_destroy_source(connection_.loop(), source_); }
    LoopTimer(const LoopTimer&) = delete;
    LoopTimer& operator=(const LoopTimer&) = delete;

    [[nodiscard]] bool isRunning() const { return interval_ > 0; }

    /// Fires every `seconds` from now on; 0 turns it off. Keeps its beat when nothing changes.
    void setInterval(double seconds)
    {
        if (std::exchange(interval_, seconds) == seconds) {
            return;
        }
        timespec interval = time(seconds);
        pw_loop_update_timer(connection_.loop(), source_, &interval, &interval, false);
    }

    /// Fires once, `seconds` from now, instead of anything that was set before; not for 0.
    /// setInterval(0) turns it off.
    void fireOnce(double seconds)
    {
        interval_ = once;
        timespec value = time(seconds);
        pw_loop_update_timer(connection_.loop(), source_, &value, nullptr, false);
    }

private:
    static constexpr double once = -1;

    static timespec time(double seconds)
    {
        timespec time{};
        time.tv_sec = static_cast<time_t>(seconds);
        time.tv_nsec = static_cast<long>((seconds - static_cast<double>(time.tv_sec)) * 1e9);
        return time;
    }
    static void onTimer(void* data, std::uint64_t /*expirations*/)
    {
        static_cast<LoopTimer*>(data)->fired_();
    }

    Connection& connection_;
    std::function<void()> fired_;
    spa_source* source_;
    double interval_ = 0;
};

} // namespace fadewell::pipewire
