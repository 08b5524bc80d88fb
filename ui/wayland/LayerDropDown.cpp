#include "ui/wayland/LayerDropDown.h"

#include "platform/wayland/WaylandWait.h"
#include "ui/wayland/LayerPlace.h"

#include <QGuiApplication>
#include <QScreen>
#include <QWindow>
#include <qpa/qplatformnativeinterface.h>

#include <chrono>
#include <utility>
#include <vector>
#include <wayland-client.h>
#include <wlr-layer-shell-unstable-v1-client-protocol.h>

namespace fadewell {
namespace {

using namespace std::chrono_literals;
constexpr auto patience = 300ms; // for the compositor's consent to one opening

wl_output* outputOf(QScreen* screen)
{
    auto* native = QGuiApplication::platformNativeInterface();
    return static_cast<wl_output*>(native->nativeResourceForScreen("output", screen));
}

std::uint32_t anchors(Qt::Edges edges)
{
    constexpr std::pair<Qt::Edge, std::uint32_t> names[] = {
        {Qt::TopEdge, ZWLR_LAYER_SURFACE_V1_ANCHOR_TOP},
        {Qt::BottomEdge, ZWLR_LAYER_SURFACE_V1_ANCHOR_BOTTOM},
        {Qt::LeftEdge, ZWLR_LAYER_SURFACE_V1_ANCHOR_LEFT},
        {Qt::RightEdge, ZWLR_LAYER_SURFACE_V1_ANCHOR_RIGHT}};
    std::uint32_t anchors = 0;
    for (const auto& [edge, anchor] : names) {
        anchors |= edges.testFlag(edge) ? anchor : 0;
    }
    return anchors;
}

} // namespace

// The native resources are no part of Qt's stable interface: another Qt than the one that this was
// built with gets an ordinary window.
std::unique_ptr<DropDown> DropDown::create()
{
    if (!QGuiApplication::platformName().startsWith("wayland") ||
        QLatin1String(qVersion()) != QLatin1String(QT_VERSION_STR))
    {
        return nullptr;
    }
    auto* native = QGuiApplication::platformNativeInterface();
    auto* display = static_cast<wl_display*>(native->nativeResourceForIntegration("wl_display"));
    auto globals = display == nullptr ? nullptr : LayerGlobals::of(display);
    if (!globals) {
        return nullptr;
    }
    // Qt then leaves the surface of a window that asks for it without a role, free for this one.
    qputenv("QT_WAYLAND_USE_BYPASSWINDOWMANAGERHINT", "1");
    return std::make_unique<LayerDropDown>(std::move(globals));
}

/// What libwayland calls.
struct LayerDropDown::Listeners {
    static constexpr zwlr_layer_surface_v1_listener layer{
        .configure = [](void* self,
                        zwlr_layer_surface_v1*,
                        std::uint32_t serial,
                        std::uint32_t,
                        std::uint32_t) { static_cast<LayerDropDown*>(self)->configure(serial); },
        .closed =
            [](void* self, zwlr_layer_surface_v1*) {
                // Later: it destroys what libwayland is just calling.
                QMetaObject::invokeMethod(
                    static_cast<LayerDropDown*>(self), &DropDown::dismissed, Qt::QueuedConnection);
            }};
};

LayerDropDown::LayerDropDown(std::unique_ptr<LayerGlobals> globals)
    : globals_(std::move(globals))
{}

LayerDropDown::~LayerDropDown()
{
    close();
}

bool LayerDropDown::open(QWindow& window, const std::optional<QRect>& anchorRect)
{
    close();
    window_ = &window;
    anchorRect_ = anchorRect;
    window.destroy(); // What it was before has another role.
    window.setFlag(Qt::BypassWindowManagerHint);
    window.create();
    auto* native = QGuiApplication::platformNativeInterface();
    surface_ = static_cast<wl_surface*>(native->nativeResourceForWindow("surface", &window));
    if (surface_ == nullptr) {
        close();
        return false;
    }
    // Without coordinates the compositor takes the screen that is in use.
    auto* screen = anchorRect ? QGuiApplication::screenAt(anchorRect->center()) : nullptr;
    auto* queue = wl_display_create_queue(globals_->display);
    makeLayer(screen == nullptr ? nullptr : outputOf(screen), queue);
    const bool isAllowed = waitForConsent(queue);
    if (!isAllowed) {
        close();
    }
    wl_event_queue_destroy(queue);
    if (isAllowed) {
        watchOutside();
    }
    return isAllowed;
}

void LayerDropDown::makeLayer(wl_output* output, wl_event_queue* queue)
{
    auto* shell = static_cast<zwlr_layer_shell_v1*>(wl_proxy_create_wrapper(globals_->shell));
    wl_proxy_set_queue(reinterpret_cast<wl_proxy*>(shell), queue);
    layer_ = zwlr_layer_shell_v1_get_layer_surface(
        shell, surface_, output, ZWLR_LAYER_SHELL_V1_LAYER_OVERLAY, "fadewell");
    wl_proxy_wrapper_destroy(shell);
    zwlr_layer_surface_v1_add_listener(layer_, &Listeners::layer, this);
    // On demand would leave it to the compositor whether the panel has the keyboard at once.
    zwlr_layer_surface_v1_set_keyboard_interactivity(
        layer_, ZWLR_LAYER_SURFACE_V1_KEYBOARD_INTERACTIVITY_EXCLUSIVE);
    connect(window_, &QWindow::activeChanged, this, &LayerDropDown::shareKeyboard);
    arrange();
    wl_surface_commit(surface_);
}

bool LayerDropDown::waitForConsent(wl_event_queue* queue)
{
    isConfigured_ = false;
    const bool isAllowed = waitFor(isConfigured_, globals_->display, queue, patience);
    wl_proxy_set_queue(reinterpret_cast<wl_proxy*>(layer_), nullptr);
    wl_display_dispatch_queue_pending(globals_->display, queue);
    return isAllowed;
}

void LayerDropDown::configure(std::uint32_t serial)
{
    isConfigured_ = true;
    zwlr_layer_surface_v1_ack_configure(layer_, serial);
}

void LayerDropDown::arrange()
{
    const auto* screen = anchorRect_ ? QGuiApplication::screenAt(anchorRect_->center()) : nullptr;
    const auto area = (screen != nullptr ? screen : QGuiApplication::primaryScreen())->geometry();
    const auto size = window_->size();
    const auto place = LayerPlace::of(anchorRect_, area, size);
    const auto& margins = place.margins;
    zwlr_layer_surface_v1_set_anchor(layer_, anchors(place.edges));
    zwlr_layer_surface_v1_set_margin(
        layer_, margins.top(), margins.right(), margins.bottom(), margins.left());
    zwlr_layer_surface_v1_set_size(layer_,
                                   static_cast<std::uint32_t>(size.width()),
                                   static_cast<std::uint32_t>(size.height()));
}

void LayerDropDown::fit()
{
    if (layer_ != nullptr) {
        arrange(); // Holds from the window's next picture on.
    }
}

// Once it has the keyboard, others may take it, which closes the panel.
void LayerDropDown::shareKeyboard()
{
    if (layer_ != nullptr && window_->isActive() && globals_->hasKeyboardOnDemand()) {
        zwlr_layer_surface_v1_set_keyboard_interactivity(
            layer_, ZWLR_LAYER_SURFACE_V1_KEYBOARD_INTERACTIVITY_ON_DEMAND);
        wl_surface_commit(surface_);
    }
}

void LayerDropDown::watchOutside()
{
    std::vector<wl_output*> outputs;
    for (auto* screen : QGuiApplication::screens()) {
        if (auto* output = outputOf(screen)) {
            outputs.push_back(output);
        }
    }
    outside_ = std::make_unique<OutsideClicks>(*globals_, outputs, [this] {
        QMetaObject::invokeMethod(this, &DropDown::clickedOutside, Qt::QueuedConnection);
    });
}

void LayerDropDown::close()
{
    outside_.reset();
    if (layer_ != nullptr) {
        // Before Qt destroys the surface: one that still has a role must not go.
        zwlr_layer_surface_v1_destroy(std::exchange(layer_, nullptr));
    }
    surface_ = nullptr;
    if (window_) {
        disconnect(window_, nullptr, this, nullptr);
        window_->destroy();
        window_->setFlag(Qt::BypassWindowManagerHint, false);
        window_.clear();
    }
}

} // namespace fadewell
