#pragma once

#include <QSize>

#include <cstdint>

struct wl_buffer;
struct wl_output;
struct wl_surface;
struct wp_viewport;
struct zwlr_layer_surface_v1;

namespace fadewell {

class LayerGlobals;

/// Covers one screen with nothing, so that a click there is ours. One transparent pixel, stretched:
/// it costs no memory.
class ClickCatcher {
public:
    /// `globals` and `pixel` must outlive it.
    ClickCatcher(const LayerGlobals& globals, wl_output* output, wl_buffer* pixel);
    ~ClickCatcher();
    ClickCatcher(const ClickCatcher&) = delete;
    ClickCatcher& operator=(const ClickCatcher&) = delete;

    [[nodiscard]] const wl_surface* surface() const { return surface_; }

    /// One transparent pixel; null when there is no memory for it.
    [[nodiscard]] static wl_buffer* makePixel(const LayerGlobals& globals);

private:
    struct Listeners;

    void configure(std::uint32_t serial, std::uint32_t width, std::uint32_t height);

    wl_buffer* const pixel_;
    wl_surface* const surface_;
    wp_viewport* const viewport_;
    zwlr_layer_surface_v1* const layer_;
    QSize size_; ///< as shown
};

} // namespace fadewell
