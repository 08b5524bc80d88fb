#pragma once

#include <cstdint>
#include <functional>
#include <list>
#include <memory>
#include <vector>

struct wl_buffer;
struct wl_output;
struct wl_pointer;
struct wl_seat;
struct wl_surface;
struct wl_touch;

namespace fadewell {

class ClickCatcher;
class LayerGlobals;

/// Notes clicks and touches on everything but the panel while it exists. [main thread]
class OutsideClicks {
public:
    /// `globals` must outlive it. `clicked` is called by libwayland: it must not destroy this.
    OutsideClicks(const LayerGlobals& globals,
                  const std::vector<wl_output*>& outputs,
                  std::function<void()> clicked);
    ~OutsideClicks();
    OutsideClicks(const OutsideClicks&) = delete;
    OutsideClicks& operator=(const OutsideClicks&) = delete;

private:
    /// One person's pointer and fingers.
    struct Seat {
        OutsideClicks* owner;
        wl_seat* seat;
        wl_pointer* pointer = nullptr;
        wl_touch* touch = nullptr;
        const wl_surface* under = nullptr; ///< the pointer; only compared
    };
    struct Listeners;

    void follow(Seat& seat, std::uint32_t capabilities);
    void pressed(const wl_surface* surface) const;
    static void release(Seat& seat);

    const std::function<void()> clicked_;
    wl_buffer* pixel_;
    std::vector<std::unique_ptr<ClickCatcher>> catchers_;
    std::list<Seat> seats_; ///< listeners hold their addresses
};

} // namespace fadewell
