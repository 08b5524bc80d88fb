#pragma once

#include <QDBusArgument>
#include <QList>
#include <QMetaType>
#include <QVariantMap>

namespace fadewell {

/// A menu item with the properties that a host asked for or that changed: (ia{sv}).
struct MenuItemProperties {
    int id = 0;
    QVariantMap properties{};
};

QDBusArgument& operator<<(QDBusArgument& argument, const MenuItemProperties& item);
const QDBusArgument& operator>>(const QDBusArgument& argument, MenuItemProperties& item);

} // namespace fadewell

Q_DECLARE_METATYPE(fadewell::MenuItemProperties)
