#pragma once

#include <QDBusArgument>
#include <QMetaType>
#include <QVariantMap>

#include <vector>

namespace fadewell {

/// A menu item and those below it: (ia{sv}av).
struct MenuLayout {
    int id = 0;
    QVariantMap properties{};
    std::vector<MenuLayout> children{};
};

QDBusArgument& operator<<(QDBusArgument& argument, const MenuLayout& layout);
const QDBusArgument& operator>>(const QDBusArgument& argument, MenuLayout& layout);

} // namespace fadewell

Q_DECLARE_METATYPE(fadewell::MenuLayout)
