#pragma once

#include "shortcuts/NamedBinding.h"
#include "shortcuts/Shortcut.h"

#include <QDBusArgument>
#include <QList>
#include <QString>
#include <QVariantMap>

#include <map>
#include <string>

namespace fadewell {

/// A shortcut as it crosses to the portal and back.
struct PortalShortcut {
    QString id;
    QVariantMap properties;
};
using PortalShortcuts = QList<PortalShortcut>;

QDBusArgument& operator<<(QDBusArgument& argument, const PortalShortcut& shortcut);
const QDBusArgument& operator>>(const QDBusArgument& argument, PortalShortcut& shortcut);

/// Lets the bus carry them; once in a process.
void registerPortalTypes();

/// What the portal is to be asked for.
[[nodiscard]] PortalShortcut toPortal(const shortcuts::NamedBinding& binding);

/// The combinations as the desktop shows them, by name; empty for what is no list of shortcuts.
[[nodiscard]] std::map<std::string, std::string> triggersOf(const QVariant& list);

/// A combination in the words of the desktop standard, such as "CTRL+ALT+m"; empty when it can't be
/// said.
[[nodiscard]] std::string portalTrigger(const shortcuts::Shortcut& shortcut);

} // namespace fadewell
