#include "ui/style/MenuTracking.h"

#include <QQmlEngine>

namespace fadewell {

MenuTracking& MenuTracking::instance()
{
    static auto* const tracking = new MenuTracking; // Never deleted: outlives every engine.
    return *tracking;
}

MenuTracking* MenuTracking::create(QQmlEngine* /*engine*/, QJSEngine* /*scriptEngine*/)
{
    QQmlEngine::setObjectOwnership(&instance(), QQmlEngine::CppOwnership);
    return &instance();
}

void MenuTracking::setTracking(QObject* menu, bool isTracking)
{
    if (!isTracking) {
        remove(menu);
        return;
    }
    if (menus_.contains(menu)) {
        return;
    }
    const bool isFirst = menus_.isEmpty();
    menus_.insert(menu);
    connect(menu, &QObject::destroyed, this, &MenuTracking::remove);
    if (isFirst) {
        emit changed(true);
    }
}

void MenuTracking::remove(QObject* menu)
{
    if (menus_.remove(menu)) {
        disconnect(menu, &QObject::destroyed, this, &MenuTracking::remove);
        if (menus_.isEmpty()) {
            emit changed(false);
        }
    }
}

} // namespace fadewell
