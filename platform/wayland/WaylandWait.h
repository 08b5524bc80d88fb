#pragma once

#include <chrono>

struct wl_display;
struct wl_event_queue;

namespace fadewell {

/// Lets a connection handle the events of one queue until `isDone` or the time is over. False when
/// it is over first or the compositor has gone. Other threads may read from the same connection.
[[nodiscard]] bool waitFor(const bool& isDone,
                           wl_display* display,
                           wl_event_queue* queue,
                           std::chrono::milliseconds patience);

/// The same until the compositor has handled all that it was asked.
[[nodiscard]] bool
waitForAnswers(wl_display* display, wl_event_queue* queue, std::chrono::milliseconds patience);

} // namespace fadewell
