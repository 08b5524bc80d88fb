#pragma once

#include <QDBusArgument>
#include <QDBusVariant>
#include <QMetaType>
#include <QString>

namespace fadewell {

/// What a host tells that happened to a menu item: (isvu).
struct MenuEvent {
    int id = 0;
    QString name{};
    QDBusVariant data{};
    uint timestamp = 0;
};

QDBusArgument& operator<<(QDBusArgument& argument, const MenuEvent& event);
const QDBusArgument& operator>>(const QDBusArgument& argument, MenuEvent& event);

} // namespace fadewell

Q_DECLARE_METATYPE(fadewell::MenuEvent)
