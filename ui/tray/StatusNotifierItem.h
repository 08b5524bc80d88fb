#pragma once

#include "ui/tray/MenuOnBus.h"
#include "ui/tray/ScrollSteps.h"
#include "ui/tray/TrayActions.h"
#include "ui/tray/TrayAppearance.h"

#include <QDBusConnection>
#include <QObject>

namespace fadewell {

/// The tray icon as an object on the bus, which tray hosts show. [main thread]
class StatusNotifierItem final : public QObject {
    Q_OBJECT

public:
    /// `actions` and `menu` have to outlive this; `themePath` is a folder of icon themes to look
    /// into first.
    StatusNotifierItem(TrayActions& actions,
                       MenuOnBus& menu,
                       QString themePath,
                       ScrollSteps::Host host);

    /// Puts the icon, its menu and a name for both on the bus; the name is empty when the bus
    /// refused.
    [[nodiscard]] QString publish(QDBusConnection& connection);

    /// Hosts hear of what is different from before and of nothing else.
    void setAppearance(TrayAppearance appearance);

    [[nodiscard]] const TrayAppearance& appearance() const { return appearance_; }
    [[nodiscard]] const QString& themePath() const { return themePath_; }
    [[nodiscard]] TrayActions& actions() { return actions_; }
    /// What a host tells of the wheel.
    void scroll(int delta) { actions_.step(steps_.take(delta)); }

    static constexpr const char* path = "/StatusNotifierItem";
    static constexpr const char* menuPath = "/StatusNotifierItem/Menu";

Q_SIGNALS:
    void iconChanged();
    void labelChanged();

private:
    TrayActions& actions_;
    MenuOnBus& menu_;
    QString themePath_;
    ScrollSteps steps_;
    TrayAppearance appearance_;
};

} // namespace fadewell
