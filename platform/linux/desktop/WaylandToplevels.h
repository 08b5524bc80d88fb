#pragma once

#include <cstdint>
#include <list>
#include <optional>
#include <string>

struct wl_array;
struct wl_display;
struct wl_event_queue;
struct wl_registry;
struct zwlr_foreign_toplevel_handle_v1;
struct zwlr_foreign_toplevel_manager_v1;

namespace fadewell {

/// The windows of all programs, as a compositor lists them at one moment.
class WaylandToplevels {
public:
    /// `display` must outlive it.
    explicit WaylandToplevels(wl_display* display);
    ~WaylandToplevels();
    WaylandToplevels(const WaylandToplevels&) = delete;
    WaylandToplevels& operator=(const WaylandToplevels&) = delete;

    /// False when the compositor lists none, or doesn't answer within a tenth of a second.
    [[nodiscard]] bool read();
    /// What the activated window calls its application; absent when no window is activated.
    [[nodiscard]] std::optional<std::string> activated() const;

private:
    struct Toplevel {
        zwlr_foreign_toplevel_handle_v1* handle = nullptr;
        std::string appID{};
        bool isActivated = false;
    };
    struct Listeners;

    void bind(wl_registry* registry, std::uint32_t name, std::uint32_t version);
    void add(zwlr_foreign_toplevel_handle_v1* handle);

    wl_display* const display_;
    wl_event_queue* const queue_;
    zwlr_foreign_toplevel_manager_v1* manager_ = nullptr;
    std::list<Toplevel> toplevels_; ///< listeners hold their addresses
};

} // namespace fadewell
