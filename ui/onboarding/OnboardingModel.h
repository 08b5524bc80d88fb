#pragma once

#include "base/Subscription.h"
#include "ui/onboarding/OnboardingParts.h"

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

namespace fadewell {

/// What the onboarding reads and calls; gone with its window. [main thread]
class OnboardingModel final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the onboarding window")
    Q_PROPERTY(Step step READ step NOTIFY stepChanged)
    Q_PROPERTY(Permission permission READ permission NOTIFY changed)
    Q_PROPERTY(QString permissionTitle READ permissionTitle CONSTANT)
    Q_PROPERTY(bool hasLoginItem READ hasLoginItem CONSTANT)
    Q_PROPERTY(bool opensAtLogin READ opensAtLogin NOTIFY changed)
    Q_PROPERTY(bool isTrayMissing READ isTrayMissing NOTIFY stepChanged)

public:
    enum class Step {
        welcome,
        permission,
        done
    };
    Q_ENUM(Step)
    enum class Permission {
        unknown,
        asking,
        granted,
        notGranted
    };
    Q_ENUM(Permission)

    /// How long the system may take to ask the user, in seconds.
    static constexpr double timeLimit = 60;

    explicit OnboardingModel(const OnboardingParts& parts);

    [[nodiscard]] Step step() const { return step_; }
    [[nodiscard]] Permission permission() const { return permission_; }
    [[nodiscard]] QString permissionTitle() const;
    [[nodiscard]] bool hasLoginItem() const { return bool(parts_.loginItem); }
    [[nodiscard]] bool opensAtLogin() const;
    [[nodiscard]] bool isTrayMissing() const;

    /// The view came up: looks whether capturing is allowed already.
    Q_INVOKABLE void appear();
    /// To the next step; also while a question is open.
    Q_INVOKABLE void goOn();
    Q_INVOKABLE void allowAccess();
    Q_INVOKABLE void openPermission();
    Q_INVOKABLE void setOpensAtLogin(bool opens);
    Q_INVOKABLE void finish();

signals:
    void changed();
    void stepChanged();
    void finished();

private:
    void setPermission(Permission permission);

    const OnboardingParts& parts_;
    Step step_ = Step::welcome;
    Permission permission_ = Permission::unknown;
    Subscription loginObserver_;
    Subscription check_;
    Subscription request_;
};

} // namespace fadewell
