#pragma once

#include "ui/tray/bus/TrayPixmap.h"
#include "ui/tray/bus/TrayToolTip.h"

#include <QDBusAbstractAdaptor>
#include <QDBusObjectPath>
#include <QString>

namespace fadewell {

class StatusNotifierItem;

/// The protocol of the desktops' trays. Names and signatures are the protocol's; what Fadewell has
/// no use for is empty, because some hosts complain of what is missing.
class StatusNotifierItemAdaptor final : public QDBusAbstractAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierItem")
    Q_PROPERTY(QString Category READ category)
    Q_PROPERTY(QString Id READ id)
    Q_PROPERTY(QString Title READ title)
    Q_PROPERTY(QString Status READ status)
    Q_PROPERTY(int WindowId READ windowId)
    Q_PROPERTY(QString IconName READ iconName)
    Q_PROPERTY(fadewell::TrayPixmaps IconPixmap READ iconPixmap)
    Q_PROPERTY(QString IconAccessibleDesc READ title)
    Q_PROPERTY(QString IconThemePath READ iconThemePath)
    Q_PROPERTY(QString OverlayIconName READ noText)
    Q_PROPERTY(fadewell::TrayPixmaps OverlayIconPixmap READ noPixmaps)
    Q_PROPERTY(QString AttentionIconName READ noText)
    Q_PROPERTY(fadewell::TrayPixmaps AttentionIconPixmap READ noPixmaps)
    Q_PROPERTY(QString AttentionMovieName READ noText)
    Q_PROPERTY(fadewell::TrayToolTip ToolTip READ toolTip)
    Q_PROPERTY(bool ItemIsMenu READ itemIsMenu)
    Q_PROPERTY(QDBusObjectPath Menu READ menu)

public:
    explicit StatusNotifierItemAdaptor(StatusNotifierItem& item);

    [[nodiscard]] QString category() const { return "Hardware"; }
    [[nodiscard]] QString id() const { return "fadewell"; }
    [[nodiscard]] QString title() const;
    [[nodiscard]] QString status() const { return "Active"; }
    [[nodiscard]] int windowId() const { return 0; }
    [[nodiscard]] QString iconName() const;
    [[nodiscard]] TrayPixmaps iconPixmap() const;
    [[nodiscard]] QString iconThemePath() const;
    [[nodiscard]] QString noText() const { return {}; }
    [[nodiscard]] TrayPixmaps noPixmaps() const { return {}; }
    [[nodiscard]] TrayToolTip toolTip() const;
    [[nodiscard]] bool itemIsMenu() const { return false; }
    [[nodiscard]] QDBusObjectPath menu() const;

public Q_SLOTS:
    void Activate(int x, int y);
    void SecondaryActivate(int x, int y);
    void ContextMenu(int x, int y);
    void Scroll(int delta, const QString& orientation);
    void ProvideXdgActivationToken(const QString& token);

Q_SIGNALS:
    void NewIcon();
    void NewTitle();
    void NewToolTip();
    // Part of the protocol; what they tell of never changes here.
    void NewAttentionIcon();
    void NewOverlayIcon();
    void NewStatus(const QString& status);

private:
    StatusNotifierItem& item_;
};

} // namespace fadewell
