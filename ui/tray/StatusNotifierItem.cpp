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
    const bool isPublished = connection.registerObject(path, this) &&
                             connection.registerObject(menuPath, &menu_) &&
                             connection.registerService(name);
    return isPublished ? name : QString();
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
