#include "ui/tray/bus/MenuEvent.h"

namespace fadewell {

QDBusArgument& operator<<(QDBusArgument& argument, const MenuEvent& event)
{
    argument.beginStructure();
    argument << event.id << event.name << event.data << event.timestamp;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, MenuEvent& event)
{
    argument.beginStructure();
    argument >> event.id >> event.name >> event.data >> event.timestamp;
    argument.endStructure();
    return argument;
}

} // namespace fadewell
