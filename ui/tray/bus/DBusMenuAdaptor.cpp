#include "ui/tray/bus/DBusMenuAdaptor.h"

#include "ui/tray/MenuOnBus.h"

#include <QDBusMetaType>
#include <QLocale>

namespace fadewell {
namespace {

constexpr int root = 0;

void registerTypes()
{
    qDBusRegisterMetaType<MenuLayout>();
    qDBusRegisterMetaType<MenuItemProperties>();
    qDBusRegisterMetaType<QList<MenuItemProperties>>();
    qDBusRegisterMetaType<MenuItemNames>();
    qDBusRegisterMetaType<QList<MenuItemNames>>();
    qDBusRegisterMetaType<MenuEvent>();
    qDBusRegisterMetaType<QList<MenuEvent>>();
}

/// Those of `all` that a host names; without names, all of them.
QVariantMap select(const QVariantMap& all, const QStringList& names)
{
    if (names.isEmpty()) {
        return all;
    }
    QVariantMap selected;
    for (const auto& name : names) {
        if (all.contains(name)) {
            selected.insert(name, all.value(name));
        }
    }
    return selected;
}

} // namespace

DBusMenuAdaptor::DBusMenuAdaptor(MenuOnBus& menu)
    : QDBusAbstractAdaptor(&menu)
    , menu_(menu)
{
    registerTypes();
    connect(&menu, &MenuOnBus::layoutChanged, this, [this] {
        Q_EMIT LayoutUpdated(menu_.revision(), root);
    });
    connect(&menu, &MenuOnBus::entriesChanged, this, &DBusMenuAdaptor::tellChanges);
}

QString DBusMenuAdaptor::textDirection() const
{
    return QLocale().textDirection() == Qt::RightToLeft ? "rtl" : "ltr";
}

uint DBusMenuAdaptor::GetLayout(int parentId,
                                int recursionDepth,
                                const QStringList& propertyNames,
                                MenuLayout& layout)
{
    layout = {.id = parentId, .properties = properties(parentId, propertyNames)};
    if (parentId == root && recursionDepth != 0) {
        for (const auto& entry : menu_.entries()) {
            layout.children.push_back(
                {.id = entry.id, .properties = properties(entry.id, propertyNames)});
        }
    }
    return menu_.revision();
}

QList<MenuItemProperties> DBusMenuAdaptor::GetGroupProperties(const QList<int>& ids,
                                                              const QStringList& propertyNames)
{
    QList<MenuItemProperties> items;
    if (ids.isEmpty()) {
        for (const auto& entry : menu_.entries()) {
            items.append({.id = entry.id, .properties = properties(entry.id, propertyNames)});
        }
    }
    for (const int id : ids) {
        if (id == root || menu_.find(id) != nullptr) {
            items.append({.id = id, .properties = properties(id, propertyNames)});
        }
    }
    return items;
}

QDBusVariant DBusMenuAdaptor::GetProperty(int id, const QString& name)
{
    const auto value = properties(id, {}).value(name);
    return QDBusVariant(value.isValid() ? value : QVariant(QString()));
}

void DBusMenuAdaptor::Event(int id,
                            const QString& eventId,
                            const QDBusVariant& /*data*/,
                            uint /*timestamp*/)
{
    if (eventId == "clicked") {
        menu_.click(id);
    }
}

QList<int> DBusMenuAdaptor::EventGroup(const QList<MenuEvent>& events)
{
    QList<int> unknown;
    for (const auto& event : events) {
        if (event.id != root && menu_.find(event.id) == nullptr) {
            unknown.append(event.id);
        } else {
            Event(event.id, event.name, event.data, event.timestamp);
        }
    }
    return unknown;
}

bool DBusMenuAdaptor::AboutToShow(int /*id*/)
{
    return false; // Hosts hear of every change when it happens.
}

QList<int> DBusMenuAdaptor::AboutToShowGroup(const QList<int>& ids, QList<int>& idErrors)
{
    for (const int id : ids) {
        if (id != root && menu_.find(id) == nullptr) {
            idErrors.append(id);
        }
    }
    return {};
}

QVariantMap DBusMenuAdaptor::properties(int id, const QStringList& names) const
{
    if (id == root) {
        return select({{"children-display", "submenu"}}, names);
    }
    const auto* entry = menu_.find(id);
    return entry == nullptr ? QVariantMap() : select(MenuOnBus::properties(*entry), names);
}

void DBusMenuAdaptor::tellChanges(const std::vector<int>& ids)
{
    QList<MenuItemProperties> updated;
    QList<MenuItemNames> removed;
    for (const int id : ids) {
        const auto all = properties(id, {});
        updated.append({.id = id, .properties = all});
        if (!all.contains("enabled")) {
            removed.append({.id = id, .names = {"enabled"}});
        }
    }
    Q_EMIT ItemsPropertiesUpdated(updated, removed);
}

} // namespace fadewell
