#include "platform/wayland/WaylandWait.h"

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <poll.h>
#include <wayland-client.h>

namespace fadewell {
namespace {

using Clock = std::chrono::steady_clock;

/// Waits until there is something to read; false when there is nothing in time.
bool waitToRead(int descriptor, Clock::time_point deadline)
{
    for (;;) {
        const auto left =
            std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now()).count();
        pollfd watched{.fd = descriptor, .events = POLLIN, .revents = 0};
        const int ready = poll(&watched, 1, static_cast<int>(std::max<long>(left, 0)));
        if (ready >= 0 || errno != EINTR) {
            return ready > 0;
        }
    }
}

void noteAnswer(void* isAnswered, wl_callback* /*callback*/, std::uint32_t /*serial*/)
{
    *static_cast<bool*>(isAnswered) = true;
}

constexpr wl_callback_listener answerListener{.done = noteAnswer};

} // namespace

bool waitFor(const bool& isDone,
             wl_display* display,
             wl_event_queue* queue,
             std::chrono::milliseconds patience)
{
    const auto deadline = Clock::now() + patience;
    for (;;) {
        while (wl_display_prepare_read_queue(display, queue) != 0) {
            if (wl_display_dispatch_queue_pending(display, queue) < 0) {
                return false;
            }
        }
        if (isDone) {
            wl_display_cancel_read(display);
            return true;
        }
        wl_display_flush(display);
        if (!waitToRead(wl_display_get_fd(display), deadline)) {
            wl_display_cancel_read(display);
            return false;
        }
        if (wl_display_read_events(display) < 0 ||
            wl_display_dispatch_queue_pending(display, queue) < 0) {
            return false;
        }
    }
}

bool waitForAnswers(wl_display* display, wl_event_queue* queue, std::chrono::milliseconds patience)
{
    bool isAnswered = false;
    auto* wrapper = static_cast<wl_display*>(wl_proxy_create_wrapper(display));
    wl_proxy_set_queue(reinterpret_cast<wl_proxy*>(wrapper), queue);
    auto* callback = wl_display_sync(wrapper);
    wl_proxy_wrapper_destroy(wrapper);
    wl_callback_add_listener(callback, &answerListener, &isAnswered);
    const bool isDone = waitFor(isAnswered, display, queue, patience);
    wl_callback_destroy(callback);
    return isDone;
}

} // namespace fadewell
