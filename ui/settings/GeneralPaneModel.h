#pragma once

#include "base/Subscription.h"
#include "ui/settings/SettingsParts.h"

#include <QObject>
#include <QString>
#include <QTimer>
#include <QtQml/qqmlregistration.h>

#include <optional>

namespace fadewell {

/// What the general pane reads and calls. [main thread]
class GeneralPaneModel final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the settings window")
    Q_PROPERTY(bool hasLoginItem READ hasLoginItem CONSTANT)
    Q_PROPERTY(bool opensAtLogin READ opensAtLogin NOTIFY changed)
    Q_PROPERTY(bool needsLoginApproval READ needsLoginApproval NOTIFY changed)
    Q_PROPERTY(QString loginItemsTitle READ loginItemsTitle CONSTANT)
    Q_PROPERTY(bool showsIcon READ showsIcon NOTIFY changed)
    Q_PROPERTY(bool isTrayMissing READ isTrayMissing NOTIFY changed)
    Q_PROPERTY(bool isPermissionKnown READ isPermissionKnown NOTIFY changed)
    Q_PROPERTY(bool hasPermission READ hasPermission NOTIFY changed)
    Q_PROPERTY(QString permissionTitle READ permissionTitle CONSTANT)
    Q_PROPERTY(QString soundServer READ soundServer NOTIFY changed)
    Q_PROPERTY(QString version READ version CONSTANT)
    Q_PROPERTY(bool hasDiagnostics READ hasDiagnostics CONSTANT)

public:
    explicit GeneralPaneModel(const SettingsParts& parts);

    /// The pane came up: asks for the permission, and looks at the tray and the sound server from
    /// here on.
    Q_INVOKABLE void appear();
    Q_INVOKABLE void disappear();

    [[nodiscard]] bool hasLoginItem() const { return bool(parts_.loginItem); }
    [[nodiscard]] bool opensAtLogin() const;
    [[nodiscard]] bool needsLoginApproval() const;
    [[nodiscard]] QString loginItemsTitle() const;
    [[nodiscard]] bool showsIcon() const;
    [[nodiscard]] bool isTrayMissing() const { return now_.isTrayMissing; }
    /// Not before the system has answered.
    [[nodiscard]] bool isPermissionKnown() const { return hasAudioPermission_.has_value(); }
    [[nodiscard]] bool hasPermission() const { return hasAudioPermission_.value_or(false); }
    [[nodiscard]] QString permissionTitle() const;
    /// Its name, version and state; empty where nothing is known of it.
    [[nodiscard]] QString soundServer() const;
    [[nodiscard]] QString version() const;
    [[nodiscard]] bool hasDiagnostics() const { return bool(parts_.showDiagnostics); }

    Q_INVOKABLE void setOpensAtLogin(bool opens);
    Q_INVOKABLE void setShowsIcon(bool shows);
    Q_INVOKABLE void openLoginItems();
    Q_INVOKABLE void openPermission();
    Q_INVOKABLE void openMixer();
    Q_INVOKABLE void showAbout();
    Q_INVOKABLE void showDiagnostics();

signals:
    void changed();

private:
    /// What nobody tells about.
    struct Surroundings {
        bool isTrayMissing = false;
        SoundServerInfo::State server;
        bool operator==(const Surroundings&) const = default;
    };
    void look();

    const SettingsParts& parts_;
    std::optional<bool> hasAudioPermission_; ///< absent until it is answered
    Surroundings now_;
    QTimer looking_; ///< runs while the pane is shown
    Subscription loginObserver_;
    Subscription permissionCheck_;
};

} // namespace fadewell
