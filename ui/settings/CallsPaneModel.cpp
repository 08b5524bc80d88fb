#include "ui/settings/CallsPaneModel.h"

#include "base/LocalizedText.h"

namespace fadewell {

CallsPaneModel::CallsPaneModel(const SettingsParts& parts)
    : parts_(parts)
    , apps_(parts.workspace, this)
{
    apps_.setSettings(settings());
    observer_ = parts_.model->callModeSettings.observe([this](const auto& settings) {
        apps_.setSettings(settings);
        emit changed();
    });
}

const CallModeSettings& CallsPaneModel::settings() const
{
    return parts_.model->callModeSettings.get();
}

QString CallsPaneModel::levelText() const
{
    return QString::fromStdString(localizedPercent(level()));
}

QString CallsPaneModel::widestLevelText() const
{
    return QString::fromStdString(localizedPercent(1));
}

void CallsPaneModel::setAutomatic(bool isAutomatic)
{
    auto changed = settings();
    changed.isAutomatic = isAutomatic;
    parts_.model->setCallModeSettings(changed);
}

void CallsPaneModel::setLevel(double level)
{
    auto changed = settings();
    changed.setLevel(level);
    parts_.model->setCallModeSettings(changed);
}

void CallsPaneModel::setCounts(const QString& bundleID, bool counts)
{
    auto changed = settings();
    if (counts) {
        changed.excludedApps.erase(bundleID.toStdString());
    } else {
        changed.excludedApps.insert(bundleID.toStdString());
    }
    parts_.model->setCallModeSettings(changed);
}

} // namespace fadewell
