#include "platform/linux/desktop/WaylandToplevels.h"

#include "platform/wayland/WaylandWait.h"

#include <algorithm>
#include <chrono>
#include <string_view>
#include <wayland-client.h>
#include <wlr-foreign-toplevel-management-unstable-v1-client-protocol.h>

namespace fadewell {
namespace {

using namespace std::chrono_literals;
constexpr auto patience = 50ms; // for each of two answers
constexpr std::uint32_t knownVersion = 3;

bool holds(const wl_array& states, std::uint32_t wanted)
{
    const auto* first = static_cast<const std::uint32_t*>(states.data);
    const auto* last = first + states.size / sizeof(std::uint32_t);
    return std::find(first, last, wanted) != last;
}

} // namespace

/// What libwayland calls.
struct WaylandToplevels::Listeners {
    using Handle = zwlr_foreign_toplevel_handle_v1;
    using Manager = zwlr_foreign_toplevel_manager_v1;

    static constexpr wl_registry_listener registry{
        .global =
            [](void* self,
               wl_registry* registry,
               std::uint32_t name,
               const char* interface,
               std::uint32_t version) {
                if (std::string_view(interface) == zwlr_foreign_toplevel_manager_v1_interface.name)
                {
                    static_cast<WaylandToplevels*>(self)->bind(registry, name, version);
                }
            },
        .global_remove =
            [](void*, wl_registry*, std::uint32_t) {
            }};

    static constexpr zwlr_foreign_toplevel_manager_v1_listener manager{
        .toplevel = [](void* self,
                       Manager*,
                       Handle* handle) { static_cast<WaylandToplevels*>(self)->add(handle); },
        .finished =
            [](void*, Manager*) {
            }};

    static constexpr zwlr_foreign_toplevel_handle_v1_listener toplevel{
        .title = [](void*, Handle*, const char*) {},
        .app_id = [](void* each,
                     Handle*,
                     const char* appID) { static_cast<Toplevel*>(each)->appID = appID; },
        .output_enter = [](void*, Handle*, wl_output*) {},
        .output_leave = [](void*, Handle*, wl_output*) {},
        .state =
            [](void* each, Handle*, wl_array* states) {
                static_cast<Toplevel*>(each)->isActivated =
                    holds(*states, ZWLR_FOREIGN_TOPLEVEL_HANDLE_V1_STATE_ACTIVATED);
            },
        .done = [](void*, Handle*) {},
        .closed = [](void* each, Handle*) { static_cast<Toplevel*>(each)->isActivated = false; },
        .parent =
            [](void*, Handle*, Handle*) {
            }};
};

WaylandToplevels::WaylandToplevels(wl_display* display)
    : display_(display)
    , queue_(wl_display_create_queue(display))
{}

WaylandToplevels::~WaylandToplevels()
{
    for (const auto& each : toplevels_) {
        zwlr_foreign_toplevel_handle_v1_destroy(each.handle);
    }
    if (manager_ != nullptr) {
        zwlr_foreign_toplevel_manager_v1_destroy(manager_);
    }
    wl_event_queue_destroy(queue_);
}

bool WaylandToplevels::read()
{
    auto* wrapper = static_cast<wl_display*>(wl_proxy_create_wrapper(display_));
    wl_proxy_set_queue(reinterpret_cast<wl_proxy*>(wrapper), queue_);
    auto* registry = wl_display_get_registry(wrapper);
    wl_proxy_wrapper_destroy(wrapper);
    wl_registry_add_listener(registry, &Listeners::registry, this);
    const bool isListed = waitForAnswers(display_, queue_, patience) && manager_ != nullptr &&
                          waitForAnswers(display_, queue_, patience);
    wl_registry_destroy(registry);
    return isListed;
}

std::optional<std::string> WaylandToplevels::activated() const
{
    const auto found = std::ranges::find_if(toplevels_, &Toplevel::isActivated);
    return found == toplevels_.end() ? std::nullopt : std::optional(found->appID);
}

void WaylandToplevels::bind(wl_registry* registry, std::uint32_t name, std::uint32_t version)
{
    if (manager_ == nullptr) {
        manager_ = static_cast<zwlr_foreign_toplevel_manager_v1*>(
            wl_registry_bind(registry,
                             name,
                             &zwlr_foreign_toplevel_manager_v1_interface,
                             std::min(version, knownVersion)));
        zwlr_foreign_toplevel_manager_v1_add_listener(manager_, &Listeners::manager, this);
    }
}

void WaylandToplevels::add(zwlr_foreign_toplevel_handle_v1* handle)
{
    auto& added = toplevels_.emplace_back(Toplevel{.handle = handle});
    zwlr_foreign_toplevel_handle_v1_add_listener(handle, &Listeners::toplevel, &added);
}

} // namespace fadewell
