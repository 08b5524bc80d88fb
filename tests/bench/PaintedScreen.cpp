#include "tests/bench/PaintedScreen.h"

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <stdexcept>

namespace fadewell::integration {
namespace {

constexpr int smallest = 100; // Toolkits have tiny windows that nobody sees.

template <class T>
std::unique_ptr<T, decltype(&std::free)> owned(T* answer)
{
    return {answer, &std::free};
}

} // namespace

PaintedScreen::PaintedScreen()
    : server_("1280x800x24")
    , connection_(xcb_connect(server_.display().c_str(), nullptr))
{
    const auto* screen = xcb_setup_roots_iterator(xcb_get_setup(connection_)).data;
    // Where a window has gone its picture would stay otherwise.
    const std::uint32_t values[] = {screen->black_pixel, XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY};
    const auto request = xcb_change_window_attributes_checked(
        connection_, screen->root, XCB_CW_BACK_PIXEL | XCB_CW_EVENT_MASK, values);
    if (owned(xcb_request_check(connection_, request))) {
        throw std::runtime_error("The screen doesn't tell of its windows.");
    }
    setenv("DISPLAY", server_.display().c_str(), 1);
    unsetenv("WAYLAND_DISPLAY");
}

PaintedScreen::~PaintedScreen()
{
    unsetenv("DISPLAY");
    xcb_disconnect(connection_);
}

bool PaintedScreen::isPainted()
{
    takeEvents();
    return std::any_of(shown_.begin(), shown_.end(), [this](auto window) {
        return isPainted(window, sizes_[window]);
    });
}

bool PaintedScreen::isEmpty()
{
    takeEvents();
    return std::none_of(shown_.begin(), shown_.end(), [this](auto window) {
        return sizes_[window].width >= smallest;
    });
}

void PaintedScreen::takeEvents()
{
    while (const auto event = owned(xcb_poll_for_event(connection_))) {
        switch (event->response_type & 0x7f) {
        case XCB_CREATE_NOTIFY: {
            const auto* it = reinterpret_cast<xcb_create_notify_event_t*>(event.get());
            sizes_[it->window] = {it->width, it->height};
            break;
        }
        case XCB_CONFIGURE_NOTIFY: {
            const auto* it = reinterpret_cast<xcb_configure_notify_event_t*>(event.get());
            sizes_[it->window] = {it->width, it->height};
            break;
        }
        case XCB_MAP_NOTIFY:
            shown_.insert(reinterpret_cast<xcb_map_notify_event_t*>(event.get())->window);
            break;
        case XCB_UNMAP_NOTIFY:
            shown_.erase(reinterpret_cast<xcb_unmap_notify_event_t*>(event.get())->window);
            break;
        case XCB_DESTROY_NOTIFY:
            shown_.erase(reinterpret_cast<xcb_destroy_notify_event_t*>(event.get())->window);
            break;
        default:
            break;
        }
    }
}

// The root is black, and a window shows it until its program has drawn.
bool PaintedScreen::isPainted(xcb_window_t window, Size size)
{
    if (size.width < smallest || size.height < smallest) {
        return false;
    }
    const auto middle = static_cast<std::int16_t>(size.height / 2);
    const auto request = xcb_get_image(
        connection_, XCB_IMAGE_FORMAT_Z_PIXMAP, window, 0, middle, size.width, 1, 0xffffff);
    const auto picture = owned(xcb_get_image_reply(connection_, request, nullptr));
    if (!picture) {
        return false; // It has gone meanwhile.
    }
    const auto* bytes = xcb_get_image_data(picture.get());
    return std::any_of(bytes, bytes + xcb_get_image_data_length(picture.get()), [](auto byte) {
        return byte != 0;
    });
}

} // namespace fadewell::integration
