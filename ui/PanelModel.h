#pragma once

#include "app/UntappableApps.h"
#include "base/Subscription.h"
#include "ui/AppRowsModel.h"
#include "ui/PanelWindow.h"
#include "ui/style/MenuModel.h"

#include <QObject>
#include <QString>
#include <QTimer>
#include <QtQml/qqmlregistration.h>

#include <vector>

namespace fadewell {

/// What the panel's views read and call: the mixer's model as properties. [main thread]
class PanelModel final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the panel's window")
    Q_PROPERTY(bool isActive READ isActive NOTIFY changed)
    Q_PROPERTY(fadewell::AppRowsModel* apps READ apps CONSTANT)
    Q_PROPERTY(fadewell::MenuModel* moreMenu READ moreMenu CONSTANT)
    Q_PROPERTY(fadewell::MenuModel* outputMenu READ outputMenu CONSTANT)
    Q_PROPERTY(bool canOpenSettings READ canOpenSettings CONSTANT)
    Q_PROPERTY(bool canQuit READ canQuit CONSTANT)
    Q_PROPERTY(bool canOpenPermissionSettings READ canOpenPermissionSettings CONSTANT)
    Q_PROPERTY(QString permissionSettingsTitle READ permissionSettingsTitle CONSTANT)
    Q_PROPERTY(QString fullPercent READ fullPercent CONSTANT)
    Q_PROPERTY(bool needsAudioPermission READ needsAudioPermission NOTIFY changed)
    Q_PROPERTY(bool isCallModeActive READ isCallModeActive NOTIFY changed)
    Q_PROPERTY(QString callModeCaption READ callModeCaption NOTIFY changed)
    Q_PROPERTY(bool isMicrophoneOn READ isMicrophoneOn NOTIFY changed)
    Q_PROPERTY(bool canSwitchMicrophone READ canSwitchMicrophone NOTIFY changed)
    Q_PROPERTY(QString microphoneCaption READ microphoneCaption NOTIFY changed)
    Q_PROPERTY(bool hasMicrophoneVolume READ hasMicrophoneVolume NOTIFY changed)
    Q_PROPERTY(double microphoneVolume READ microphoneVolume NOTIFY changed)
    Q_PROPERTY(QString microphoneUsers READ microphoneUsers NOTIFY changed)

public:
    PanelModel(PanelWindow::Parts parts, PanelWindow::Actions actions);

    /// Follows the mixer while active; costs nothing while not.
    void setActive(bool isActive);
    [[nodiscard]] bool isActive() const { return isActive_; }

    [[nodiscard]] AppRowsModel* apps() { return &apps_; }
    [[nodiscard]] MenuModel* moreMenu() { return &moreMenu_; }
    /// Of the app that was passed to `prepareOutputMenu` last.
    [[nodiscard]] MenuModel* outputMenu() { return &outputMenu_; }
    [[nodiscard]] bool canOpenSettings() const { return bool(actions_.openSettings); }
    [[nodiscard]] bool canQuit() const { return bool(actions_.quit); }
    [[nodiscard]] bool canOpenPermissionSettings() const
    {
        return bool(actions_.openPermissionSettings);
    }
    [[nodiscard]] QString permissionSettingsTitle() const
    {
        return actions_.permissionSettingsTitle;
    }
    /// The widest percentage.
    [[nodiscard]] QString fullPercent() const;

    [[nodiscard]] bool needsAudioPermission() const;
    [[nodiscard]] bool isCallModeActive() const;
    [[nodiscard]] QString callModeCaption() const;
    [[nodiscard]] bool isMicrophoneOn() const;
    [[nodiscard]] bool canSwitchMicrophone() const;
    [[nodiscard]] QString microphoneCaption() const;
    [[nodiscard]] bool hasMicrophoneVolume() const;
    [[nodiscard]] double microphoneVolume() const;
    /// The sentence about who uses it; empty: nobody.
    [[nodiscard]] QString microphoneUsers() const;

    Q_INVOKABLE void setVolume(const QString& appID, double volume);
    Q_INVOKABLE void setMuted(const QString& appID, bool isMuted);
    Q_INVOKABLE void prepareOutputMenu(const QString& appID);
    Q_INVOKABLE void setCallModeActive(bool isActive);
    Q_INVOKABLE void setMicrophoneOn(bool isOn);
    Q_INVOKABLE void setMicrophoneVolume(double volume);
    Q_INVOKABLE void openSettings();
    Q_INVOKABLE void openPermissionSettings();
    Q_INVOKABLE void quit();

signals:
    void changed();
    void closeRequested(); ///< by the views

private:
    void fillMoreMenu();
    void fillOutputMenu();
    void observe();
    void showRows();
    void runAndClose(const std::function<void()>& action);

    PanelWindow::Parts parts_;
    PanelWindow::Actions actions_;
    UntappableApps untappableApps_;
    AppRowsModel apps_{this};
    MenuModel moreMenu_{this};
    MenuModel outputMenu_{this};
    std::string outputMenuAppID_;
    QTimer untappableTimer_; ///< runs only while active: nothing tells of such apps
    bool isActive_ = false;
    std::vector<Subscription> subscriptions_;
};

} // namespace fadewell
