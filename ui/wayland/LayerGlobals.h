#pragma once

#include <cstdint>
#include <list>
#include <memory>

struct wl_compositor;
struct wl_display;
struct wl_event_queue;
struct wl_registry;
struct wl_seat;
struct wl_shm;
struct wp_viewporter;
struct zwlr_layer_shell_v1;

namespace fadewell {

/// What a compositor offers towards surfaces that are layers of its desktop. Events of what is made
/// from these come with Qt's own.
class LayerGlobals {
public:
    /// One person's pointer, fingers and keyboard.
    struct Seat {
        wl_seat* seat = nullptr;
        std::uint32_t capabilities = 0; ///< as wl_seat has them; of this moment
    };

    /// Null when something is missing, or the compositor doesn't answer in time.
    [[nodiscard]] static std::unique_ptr<LayerGlobals> of(wl_display* display);
    ~LayerGlobals();
    LayerGlobals(const LayerGlobals&) = delete;
    LayerGlobals& operator=(const LayerGlobals&) = delete;

    wl_display* const display;
    wl_compositor* compositor = nullptr;
    wl_shm* shm = nullptr;
    wp_viewporter* viewporter = nullptr;
    zwlr_layer_shell_v1* shell = nullptr;
    std::list<Seat> seats{}; ///< listeners hold their addresses

    /// Whether a surface can be given the keyboard without keeping it from all others.
    [[nodiscard]] bool hasKeyboardOnDemand() const;

private:
    struct Listeners;

    explicit LayerGlobals(wl_display* connection)
        : display(connection)
    {}
    void handOverAll();
    void
    bind(wl_registry* registry, std::uint32_t name, const char* interface, std::uint32_t version);
};

} // namespace fadewell
