#include "ui/tray/bus/MenuItemProperties.h"

namespace fadewell {

QDBusArgument& operator<<(QDBusArgument& argument, const MenuItemProperties& item)
{
    argument.beginStructure();
    argument << item.id << item.properties;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, MenuItemProperties& item)
{
    argument.beginStructure();
    argument >> item.id >> item.properties;
    argument.endStructure();
    return argument;
}

} // namespace fadewell
