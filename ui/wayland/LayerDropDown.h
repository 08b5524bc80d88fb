#pragma once

#include "ui/DropDown.h"
#include "ui/wayland/LayerGlobals.h"
#include "ui/wayland/OutsideClicks.h"

#include <QPointer>

#include <cstdint>

struct wl_event_queue;
struct wl_output;
struct wl_surface;
struct zwlr_layer_surface_v1;

class QScreen;

namespace fadewell {

/// Makes a window a layer of a Wayland desktop (wlr-layer-shell), over everything else.
class LayerDropDown final : public DropDown {
    Q_OBJECT

public:
    explicit LayerDropDown(std::unique_ptr<LayerGlobals> globals);
    ~LayerDropDown() override;

    [[nodiscard]] bool open(QWindow& window, const std::optional<QRect>& anchorRect) override;
    void fit() override;
    void close() override;

private:
    struct Listeners;

    [[nodiscard]] bool waitForConsent(wl_event_queue* queue);
    void makeLayer(wl_output* output, wl_event_queue* queue);
    void configure(std::uint32_t serial);
    void arrange();
    void shareKeyboard();
    void watchOutside();

    const std::unique_ptr<LayerGlobals> globals_;
    QPointer<QWindow> window_;
    std::optional<QRect> anchorRect_;
    wl_surface* surface_ = nullptr; ///< Qt's
    zwlr_layer_surface_v1* layer_ = nullptr;
    bool isConfigured_ = false;
    std::unique_ptr<OutsideClicks> outside_;
};

} // namespace fadewell
