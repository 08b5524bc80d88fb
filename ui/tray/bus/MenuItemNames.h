#pragma once

#include <QDBusArgument>
#include <QMetaType>
#include <QStringList>

namespace fadewell {

/// A menu item with names of its properties, such as those that are at their defaults again: (ias).
struct MenuItemNames {
    int id = 0;
    QStringList names{};
};

QDBusArgument& operator<<(QDBusArgument& argument, const MenuItemNames& item);
const QDBusArgument& operator>>(const QDBusArgument& argument, MenuItemNames& item);

} // namespace fadewell

Q_DECLARE_METATYPE(fadewell::MenuItemNames)
