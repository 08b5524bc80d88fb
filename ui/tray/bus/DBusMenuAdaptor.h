#pragma once

#include "ui/tray/bus/MenuEvent.h"
#include "ui/tray/bus/MenuItemNames.h"
#include "ui/tray/bus/MenuItemProperties.h"
#include "ui/tray/bus/MenuLayout.h"

#include <QDBusAbstractAdaptor>
#include <QDBusVariant>
#include <QList>
#include <QStringList>

#include <vector>

namespace fadewell {

class MenuOnBus;

/// The menu protocol of the desktops' trays. Names and signatures are the protocol's.
class DBusMenuAdaptor final : public QDBusAbstractAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "com.canonical.dbusmenu")
    Q_PROPERTY(uint Version READ version)
    Q_PROPERTY(QString TextDirection READ textDirection)
    Q_PROPERTY(QString Status READ status)
    Q_PROPERTY(QStringList IconThemePath READ iconThemePath)

public:
    explicit DBusMenuAdaptor(MenuOnBus& menu);

    [[nodiscard]] uint version() const { return 3; }
    [[nodiscard]] QString textDirection() const;
    [[nodiscard]] QString status() const { return "normal"; }
    [[nodiscard]] QStringList iconThemePath() const { return {}; }

public Q_SLOTS:
    uint GetLayout(int parentId,
                   int recursionDepth,
                   const QStringList& propertyNames,
                   fadewell::MenuLayout& layout);
    QList<fadewell::MenuItemProperties> GetGroupProperties(const QList<int>& ids,
                                                           const QStringList& propertyNames);
    QDBusVariant GetProperty(int id, const QString& name);
    void Event(int id, const QString& eventId, const QDBusVariant& data, uint timestamp);
    QList<int> EventGroup(const QList<fadewell::MenuEvent>& events);
    bool AboutToShow(int id);
    QList<int> AboutToShowGroup(const QList<int>& ids, QList<int>& idErrors);

Q_SIGNALS:
    void ItemsPropertiesUpdated(const QList<fadewell::MenuItemProperties>& updatedProps,
                                const QList<fadewell::MenuItemNames>& removedProps);
    void LayoutUpdated(uint revision, int parent);

private:
    [[nodiscard]] QVariantMap properties(int id, const QStringList& names) const;
    void tellChanges(const std::vector<int>& ids);

    MenuOnBus& menu_;
};

} // namespace fadewell
