#include "ui/onboarding/OnboardingModel.h"

namespace fadewell {

OnboardingModel::OnboardingModel(const OnboardingParts& parts)
    : parts_(parts)
{
    if (parts_.loginItem) {
        loginObserver_ = parts_.loginItem->status.observe([this](auto) { emit changed(); });
    }
}

void OnboardingModel::appear()
{
    if (parts_.audioAccess) {
        check_ = parts_.audioAccess->check([this](bool isAllowed) {
            if (isAllowed) {
                setPermission(Permission::granted);
            }
        });
    }
}

void OnboardingModel::goOn()
{
    if (step_ != Step::done) {
        step_ = step_ == Step::welcome ? Step::permission : Step::done;
        emit stepChanged();
    }
}

void OnboardingModel::allowAccess()
{
    if (permission_ == Permission::asking) {
        return;
    }
    setPermission(Permission::asking);
    if (!parts_.audioAccess) {
        setPermission(Permission::notGranted);
        return;
    }
    request_ = parts_.audioAccess->request(timeLimit, [this](bool isAllowed) {
        setPermission(isAllowed ? Permission::granted : Permission::notGranted);
    });
}

void OnboardingModel::setPermission(Permission permission)
{
    permission_ = permission;
    emit changed();
}

QString OnboardingModel::permissionTitle() const
{
    return parts_.systemPages->openTitle(SystemPage::audioPermission);
}

void OnboardingModel::openPermission()
{
    parts_.systemPages->open(SystemPage::audioPermission);
}

bool OnboardingModel::opensAtLogin() const
{
    return parts_.loginItem && parts_.loginItem->isSwitchedOn();
}

void OnboardingModel::setOpensAtLogin(bool opens)
{
    if (parts_.loginItem) {
        parts_.loginItem->setEnabled(opens);
    }
}

bool OnboardingModel::isTrayMissing() const
{
    return parts_.isTrayMissing && parts_.isTrayMissing();
}

void OnboardingModel::finish()
{
    emit finished();
}

} // namespace fadewell
