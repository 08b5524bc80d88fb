#include "ui/tray/bus/MenuItemNames.h"

namespace fadewell {

QDBusArgument& operator<<(QDBusArgument& argument, const MenuItemNames& item)
{
    argument.beginStructure();
    argument << item.id << item.names;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, MenuItemNames& item)
{
    argument.beginStructure();
    argument >> item.id >> item.names;
    argument.endStructure();
    return argument;
}

} // namespace fadewell
