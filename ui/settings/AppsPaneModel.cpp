#include "ui/settings/AppsPaneModel.h"

#include <QMetaObject>

namespace fadewell {

AppsPaneModel::AppsPaneModel(const SettingsParts& parts)
    : parts_(parts)
{
    apps_.setApps(parts_.model->rememberedApps.get());
    observer_ =
        parts_.model->rememberedApps.observe([this](const auto& apps) { apps_.setApps(apps); });
}

void AppsPaneModel::forget(const QString& appID)
{
    // The row whose button asks for this goes away by it.
    QMetaObject::invokeMethod(
        this, [this, id = appID.toStdString()] { parts_.model->forget(id); }, Qt::QueuedConnection);
}

void AppsPaneModel::forgetAll()
{
    parts_.model->forgetAll();
}

} // namespace fadewell
