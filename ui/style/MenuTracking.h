#pragma once

#include <QObject>
#include <QSet>
#include <QtQml/qqmlregistration.h>

class QJSEngine;
class QQmlEngine;

namespace fadewell {

/// Whether a menu of this program has the keyboard. Menus say so themselves; those that a tray
/// draws for us don't count, because their keys never come here. [main thread]
class MenuTracking final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    static MenuTracking& instance();

    /// For the QML engine.
    static MenuTracking* create(QQmlEngine* engine, QJSEngine* scriptEngine);

    /// The menu has the keyboard from now on, or no longer. One that is destroyed gives it back.
    Q_INVOKABLE void setTracking(QObject* menu, bool isTracking);

    [[nodiscard]] bool isTracking() const { return !menus_.isEmpty(); }

signals:
    /// The first menu took the keyboard, or the last one gave it back.
    void changed(bool isTracking);

private:
    MenuTracking() = default;
    void remove(QObject* menu);

    QSet<QObject*> menus_;
};

} // namespace fadewell
