#include "ui/wayland/OutsideClicks.h"

#include "ui/wayland/ClickCatcher.h"
#include "ui/wayland/LayerGlobals.h"

#include <algorithm>
#include <utility>
#include <wayland-client.h>

namespace fadewell {

/// What libwayland calls. What later versions of these objects than the bound ones tell is left
/// null.
struct OutsideClicks::Listeners {
    static void
    enter(void* seat, wl_pointer*, std::uint32_t, wl_surface* surface, wl_fixed_t, wl_fixed_t)
    {
        static_cast<Seat*>(seat)->under = surface;
    }
    static void leave(void* seat, wl_pointer*, std::uint32_t, wl_surface*)
    {
        static_cast<Seat*>(seat)->under = nullptr;
    }
    static void button(
        void* seat, wl_pointer*, std::uint32_t, std::uint32_t, std::uint32_t, std::uint32_t state)
    {
        const auto& from = *static_cast<Seat*>(seat);
        if (state == WL_POINTER_BUTTON_STATE_PRESSED) {
            from.owner->pressed(from.under);
        }
    }
    static void down(void* seat,
                     wl_touch*,
                     std::uint32_t,
                     std::uint32_t,
                     wl_surface* surface,
                     std::int32_t,
                     wl_fixed_t,
                     wl_fixed_t)
    {
        static_cast<Seat*>(seat)->owner->pressed(surface);
    }

    static constexpr wl_pointer_listener pointer = [] {
        wl_pointer_listener listener{};
        listener.enter = enter;
        listener.leave = leave;
        listener.motion = [](void*, wl_pointer*, std::uint32_t, wl_fixed_t, wl_fixed_t) {
        };
        listener.button = button;
        listener.axis = [](void*, wl_pointer*, std::uint32_t, std::uint32_t, wl_fixed_t) {
        };
        return listener;
    }();

    static constexpr wl_touch_listener touch = [] {
        wl_touch_listener listener{};
        listener.down = down;
        listener.up = [](void*, wl_touch*, std::uint32_t, std::uint32_t, std::int32_t) {
        };
        listener.motion =
            [](void*, wl_touch*, std::uint32_t, std::int32_t, wl_fixed_t, wl_fixed_t) {
            };
        listener.frame = [](void*, wl_touch*) {
        };
        listener.cancel = [](void*, wl_touch*) {
        };
        return listener;
    }();
};

OutsideClicks::OutsideClicks(const LayerGlobals& globals,
                             const std::vector<wl_output*>& outputs,
                             std::function<void()> clicked)
    : clicked_(std::move(clicked))
    , pixel_(ClickCatcher::makePixel(globals))
{
    if (pixel_ == nullptr) {
        return; // The panel still closes by Escape and when another window takes the keyboard.
    }
    for (auto* output : outputs) {
        catchers_.push_back(std::make_unique<ClickCatcher>(globals, output, pixel_));
    }
    for (const auto& seat : globals.seats) {
        follow(seats_.emplace_back(Seat{.owner = this, .seat = seat.seat}), seat.capabilities);
    }
}

OutsideClicks::~OutsideClicks()
{
    std::ranges::for_each(seats_, release);
    catchers_.clear();
    if (pixel_ != nullptr) {
        wl_buffer_destroy(pixel_);
    }
}

void OutsideClicks::follow(Seat& seat, std::uint32_t capabilities)
{
    if ((capabilities & WL_SEAT_CAPABILITY_POINTER) != 0) {
        seat.pointer = wl_seat_get_pointer(seat.seat);
        wl_pointer_add_listener(seat.pointer, &Listeners::pointer, &seat);
    }
    if ((capabilities & WL_SEAT_CAPABILITY_TOUCH) != 0) {
        seat.touch = wl_seat_get_touch(seat.seat);
        wl_touch_add_listener(seat.touch, &Listeners::touch, &seat);
    }
}

void OutsideClicks::release(Seat& seat)
{
    if (seat.pointer != nullptr) {
        wl_pointer_release(std::exchange(seat.pointer, nullptr));
    }
    if (seat.touch != nullptr) {
        wl_touch_release(std::exchange(seat.touch, nullptr));
    }
}

void OutsideClicks::pressed(const wl_surface* surface) const
{
    const bool isOutside = std::ranges::any_of(
        catchers_, [surface](const auto& each) { return each->surface() == surface; });
    if (isOutside) {
        clicked_();
    }
}

} // namespace fadewell
