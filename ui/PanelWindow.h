#pragma once

#include "app/MixerModel.h"
#include "app/Workspace.h"
#include "audio/Tappability.h"

#include <QElapsedTimer>
#include <QObject>
#include <QRect>

#include <functional>
#include <memory>
#include <optional>

class QQuickView;

namespace fadewell {

class DropDown;
class PanelModel;

/// The mixer panel on the screen. [main thread, with a QGuiApplication]
///
/// Nothing is loaded before the panel is first shown; while it is hidden nothing of it runs.
class PanelWindow final : public QObject {
    Q_OBJECT

public:
    /// What the panel shows and changes.
    struct Parts {
        std::shared_ptr<MixerModel> model;          ///< required
        std::shared_ptr<Workspace> workspace;       ///< required
        std::shared_ptr<Tappability> tappability{}; ///< may be absent
    };

    /// What the panel's menu and notice can do. An absent action has no entry.
    struct Actions {
        std::function<void()> openSettings{};
        std::function<void()> showAbout{};
        std::function<void()> quit{};
        std::function<void()> openPermissionSettings{}; ///< where capturing sound is allowed
        QString permissionSettingsTitle{};              ///< what its button says
    };

    PanelWindow(Parts parts, Actions actions, QObject* parent = nullptr);
    ~PanelWindow() override;

    /// Shows the panel and gives it the keyboard.
    ///
    /// With a rectangle (of the tray icon, in global coordinates) it drops from there, where the
    /// desktop lets it, and closes by a click outside; without one it is an ordinary window, which
    /// stays. While it is shown, brings it to the front.
    void show(const std::optional<QRect>& anchorRect = std::nullopt);
    void hide();

    /// Hides a shown panel, also one that this very click has already closed. Shown without a
    /// rectangle it drops from a corner of the screen, where the desktop offers that.
    void toggle(const std::optional<QRect>& anchorRect = std::nullopt);
    [[nodiscard]] bool isVisible() const;

signals:
    void visibilityChanged(bool isVisible);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void load();
    void open(const std::optional<QRect>& anchorRect, bool isDropDown);
    void present();
    void place();
    void fitToContent();
    void watchForClickOutside(const QEvent& event);
    void hideByClickOutside();

    std::unique_ptr<PanelModel> panel_;
    std::unique_ptr<QQuickView> view_;   ///< absent until first shown; uses `panel_`
    std::unique_ptr<DropDown> dropDown_; ///< absent where the desktop has none; uses `view_`
    bool isDropDown_ = false;            ///< it closes by a click outside
    bool isDropped_ = false;             ///< the desktop has placed it
    std::optional<QRect> anchorRect_;
    QElapsedTimer sinceClickOutside_; ///< valid once a click outside has closed the panel
};

} // namespace fadewell
