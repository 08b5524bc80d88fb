#include "ui/wayland/ClickCatcher.h"

#include "ui/wayland/LayerGlobals.h"

#include <sys/mman.h>
#include <unistd.h>
#include <utility>
#include <viewporter-client-protocol.h>
#include <wayland-client.h>
#include <wlr-layer-shell-unstable-v1-client-protocol.h>

namespace fadewell {

/// What libwayland calls.
struct ClickCatcher::Listeners {
    static constexpr zwlr_layer_surface_v1_listener layer{
        .configure =
            [](void* self,
               zwlr_layer_surface_v1*,
               std::uint32_t serial,
               std::uint32_t width,
               std::uint32_t height) {
                static_cast<ClickCatcher*>(self)->configure(serial, width, height);
            },
        .closed =
            [](void*, zwlr_layer_surface_v1*) {
            }}; // Its screen has gone; nothing is shown.
};

ClickCatcher::ClickCatcher(const LayerGlobals& globals, wl_output* output, wl_buffer* pixel)
    : pixel_(pixel)
    , surface_(wl_compositor_create_surface(globals.compositor))
    , viewport_(wp_viewporter_get_viewport(globals.viewporter, surface_))
    // Below the panel for sure: within one layer no order is promised.
    , layer_(zwlr_layer_shell_v1_get_layer_surface(
          globals.shell, surface_, output, ZWLR_LAYER_SHELL_V1_LAYER_TOP, "fadewell-outside"))
{
    constexpr auto everyEdge =
        ZWLR_LAYER_SURFACE_V1_ANCHOR_TOP | ZWLR_LAYER_SURFACE_V1_ANCHOR_BOTTOM |
        ZWLR_LAYER_SURFACE_V1_ANCHOR_LEFT | ZWLR_LAYER_SURFACE_V1_ANCHOR_RIGHT;
    constexpr int alsoBelowBars = -1;
    zwlr_layer_surface_v1_add_listener(layer_, &Listeners::layer, this);
    zwlr_layer_surface_v1_set_anchor(layer_, everyEdge);
    zwlr_layer_surface_v1_set_exclusive_zone(layer_, alsoBelowBars);
    wl_surface_commit(surface_);
}

ClickCatcher::~ClickCatcher()
{
    zwlr_layer_surface_v1_destroy(layer_);
    wp_viewport_destroy(viewport_);
    wl_surface_destroy(surface_);
}

void ClickCatcher::configure(std::uint32_t serial, std::uint32_t width, std::uint32_t height)
{
    zwlr_layer_surface_v1_ack_configure(layer_, serial);
    const QSize size(static_cast<int>(width), static_cast<int>(height));
    if (!size.isEmpty() && std::exchange(size_, size) != size) {
        wp_viewport_set_destination(viewport_, size.width(), size.height());
        wl_surface_attach(surface_, pixel_, 0, 0);
        wl_surface_commit(surface_);
    }
}

wl_buffer* ClickCatcher::makePixel(const LayerGlobals& globals)
{
    constexpr int size = sizeof(std::uint32_t);
    const int memory = memfd_create("fadewell-pixel", MFD_CLOEXEC);
    if (memory < 0 || ftruncate(memory, size) != 0) { // Zeros: no colour, no opacity.
        close(memory);
        return nullptr;
    }
    auto* pool = wl_shm_create_pool(globals.shm, memory, size);
    auto* pixel = wl_shm_pool_create_buffer(pool, 0, 1, 1, size, WL_SHM_FORMAT_ARGB8888);
    wl_shm_pool_destroy(pool);
    close(memory);
    return pixel;
}

} // namespace fadewell
