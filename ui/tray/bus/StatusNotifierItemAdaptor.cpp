#include "ui/tray/bus/StatusNotifierItemAdaptor.h"

#include "ui/tray/StatusNotifierItem.h"

#include <QDBusMetaType>

#include <optional>

namespace fadewell {
namespace {

/// The place of the icon, from the click that a host tells of.
///
/// Some hosts send the place within their own small window, or nothing: coordinates that close to
/// the screen's corner are taken for that.
std::optional<QRect> iconAt(int x, int y)
{
    constexpr int withinIcon = 64;
    if (x < withinIcon && y < withinIcon) {
        return std::nullopt;
    }
    return QRect(x, y, 1, 1);
}

} // namespace

StatusNotifierItemAdaptor::StatusNotifierItemAdaptor(StatusNotifierItem& item)
    : QDBusAbstractAdaptor(&item)
    , item_(item)
{
    qDBusRegisterMetaType<TrayPixmap>();
    qDBusRegisterMetaType<TrayPixmaps>();
    qDBusRegisterMetaType<TrayToolTip>();
    connect(&item, &StatusNotifierItem::iconChanged, this, &StatusNotifierItemAdaptor::NewIcon);
    connect(&item, &StatusNotifierItem::labelChanged, this, [this] {
        Q_EMIT NewTitle();
        Q_EMIT NewToolTip();
    });
}

QString StatusNotifierItemAdaptor::title() const
{
    return item_.appearance().label;
}

QString StatusNotifierItemAdaptor::iconName() const
{
    return item_.appearance().iconName;
}

TrayPixmaps StatusNotifierItemAdaptor::iconPixmap() const
{
    return item_.appearance().pixmaps;
}

QString StatusNotifierItemAdaptor::iconThemePath() const
{
    return item_.themePath();
}

TrayToolTip StatusNotifierItemAdaptor::toolTip() const
{
    return {.title = item_.appearance().label};
}

QDBusObjectPath StatusNotifierItemAdaptor::menu() const
{
    return QDBusObjectPath(StatusNotifierItem::menuPath);
}

void StatusNotifierItemAdaptor::Activate(int x, int y)
{
    item_.actions().activate(iconAt(x, y));
}

void StatusNotifierItemAdaptor::SecondaryActivate(int /*x*/, int /*y*/)
{
    item_.actions().activateSecondary();
}

void StatusNotifierItemAdaptor::ContextMenu(int x, int y)
{
    item_.actions().activate(iconAt(x, y)); // From a host that shows no menus.
}

void StatusNotifierItemAdaptor::Scroll(int delta, const QString& orientation)
{
    if (orientation.compare("horizontal", Qt::CaseInsensitive) != 0) {
        item_.scroll(delta);
    }
}

void StatusNotifierItemAdaptor::ProvideXdgActivationToken(const QString& token)
{
    // Qt takes it from there when it next gives a window the keyboard.
    qputenv("XDG_ACTIVATION_TOKEN", token.toUtf8().left(1024));
}

} // namespace fadewell
