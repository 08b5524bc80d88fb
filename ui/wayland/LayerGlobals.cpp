#include "ui/wayland/LayerGlobals.h"

#include "platform/wayland/WaylandWait.h"

#include <algorithm>
#include <chrono>
#include <string_view>
#include <viewporter-client-protocol.h>
#include <wayland-client.h>
#include <wlr-layer-shell-unstable-v1-client-protocol.h>

namespace fadewell {
namespace {

using namespace std::chrono_literals;
constexpr auto patience = 500ms; // once in a run

template <class Object>
Object* bound(wl_registry* registry,
              std::uint32_t name,
              const wl_interface& interface,
              std::uint32_t version)
{
    return static_cast<Object*>(wl_registry_bind(registry, name, &interface, version));
}

/// Its further events go to the queue that Qt's event loop serves.
template <class Object>
void handOver(Object* object)
{
    if (object != nullptr) {
        wl_proxy_set_queue(reinterpret_cast<wl_proxy*>(object), nullptr);
    }
}

template <class Object>
void destroy(Object* object)
{
    if (object != nullptr) {
        wl_proxy_destroy(reinterpret_cast<wl_proxy*>(object));
    }
}

} // namespace

/// What libwayland calls.
struct LayerGlobals::Listeners {
    static constexpr wl_registry_listener registry{.global =
                                                       [](void* self,
                                                          wl_registry* registry,
                                                          std::uint32_t name,
                                                          const char* interface,
                                                          std::uint32_t version) {
                                                           static_cast<LayerGlobals*>(self)->bind(
                                                               registry, name, interface, version);
                                                       },
                                                   .global_remove =
                                                       [](void*, wl_registry*, std::uint32_t) {
                                                       }};

    static constexpr wl_seat_listener seat{.capabilities =
                                               [](void* each, wl_seat*, std::uint32_t has) {
                                                   static_cast<Seat*>(each)->capabilities = has;
                                               },
                                           .name =
                                               [](void*, wl_seat*, const char*) {
                                               }};
};

std::unique_ptr<LayerGlobals> LayerGlobals::of(wl_display* display)
{
    std::unique_ptr<LayerGlobals> globals(new LayerGlobals(display));
    auto* queue = wl_display_create_queue(display);
    auto* wrapper = static_cast<wl_display*>(wl_proxy_create_wrapper(display));
    wl_proxy_set_queue(reinterpret_cast<wl_proxy*>(wrapper), queue);
    auto* registry = wl_display_get_registry(wrapper);
    wl_proxy_wrapper_destroy(wrapper);
    wl_registry_add_listener(registry, &Listeners::registry, globals.get());
    // What there is, and then what the seats have.
    const bool isAnswered =
        waitForAnswers(display, queue, patience) && waitForAnswers(display, queue, patience);
    wl_registry_destroy(registry);
    globals->handOverAll();
    wl_event_queue_destroy(queue);
    const bool isComplete = globals->compositor != nullptr && globals->shm != nullptr &&
                            globals->viewporter != nullptr && globals->shell != nullptr;
    return isAnswered && isComplete ? std::move(globals) : nullptr;
}

LayerGlobals::~LayerGlobals()
{
    for (const auto& each : seats) {
        destroy(each.seat);
    }
    destroy(shell);
    destroy(viewporter);
    destroy(shm);
    destroy(compositor);
}

void LayerGlobals::handOverAll()
{
    for (const auto& each : seats) {
        handOver(each.seat);
    }
    handOver(shell);
    handOver(viewporter);
    handOver(shm);
    handOver(compositor);
}

void LayerGlobals::bind(wl_registry* registry,
                        std::uint32_t name,
                        const char* interface,
                        std::uint32_t version)
{
    const std::string_view offered = interface;
    if (offered == wl_compositor_interface.name) {
        compositor = bound<wl_compositor>(registry, name, wl_compositor_interface, 1);
    } else if (offered == wl_shm_interface.name) {
        shm = bound<wl_shm>(registry, name, wl_shm_interface, 1);
    } else if (offered == wp_viewporter_interface.name) {
        viewporter = bound<wp_viewporter>(registry, name, wp_viewporter_interface, 1);
    } else if (offered == zwlr_layer_shell_v1_interface.name) {
        constexpr std::uint32_t knownVersion = 4;
        shell = bound<zwlr_layer_shell_v1>(
            registry, name, zwlr_layer_shell_v1_interface, std::min(version, knownVersion));
    } else if (offered == wl_seat_interface.name) {
        constexpr std::uint32_t versionWithRelease = 3;
        if (version >= versionWithRelease) {
            auto& added = seats.emplace_back(Seat{
                .seat = bound<wl_seat>(registry, name, wl_seat_interface, versionWithRelease)});
            wl_seat_add_listener(added.seat, &Listeners::seat, &added);
        }
    }
}

bool LayerGlobals::hasKeyboardOnDemand() const
{
    return zwlr_layer_shell_v1_get_version(shell) >=
           ZWLR_LAYER_SURFACE_V1_KEYBOARD_INTERACTIVITY_ON_DEMAND_SINCE_VERSION;
}

} // namespace fadewell
