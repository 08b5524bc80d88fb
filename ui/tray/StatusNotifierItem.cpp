#include "ui/tray/StatusNotifierItem.h"

#include "ui/tray/bus/StatusNotifierItemAdaptor.h"

#include <unistd.h>
#include <utility>

namespace fadewell {

StatusNotifierItem::StatusNotifierItem(TrayActions& actions,
                                       MenuOnBus& menu,
                                       QString themePath,
                                       ScrollSteps::Host host)
    : actions_(actions)
    , menu_(menu)
    , themePath_(std::move(themePath))
    , steps_(host)
{
    new StatusNotifierItemAdaptor(*this); // Owned by this object, which exports it.
}

QString StatusNotifierItem::publish(QDBusConnection& connection)
{
    // The objects first: whoever sees the name may call at once.
    const auto name = QString("org.kde.StatusNotifierItem-%1-1").arg(getpid());
    if (!connection.registerObject(path, this) || !connection.registerObject(menuPath, &menu_)) {
        return {};
    }
    // A sandbox has no right to this name, and its process numbers aren't unique.
    return connection.registerService(name) ? name : connection.baseService();
}

void StatusNotifierItem::setAppearance(TrayAppearance appearance)
{
    const auto before = std::exchange(appearance_, std::move(appearance));
    if (before.iconName != appearance_.iconName || before.pixmaps != appearance_.pixmaps) {
        Q_EMIT iconChanged();
    }
    if (before.label != appearance_.label) {
        Q_EMIT labelChanged();
    }
}

} // namespace fadewell
