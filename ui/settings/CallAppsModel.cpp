#include "ui/settings/CallAppsModel.h"

#include "app/AppDirectory.h"
#include "core/KnownCallApps.h"
#include "ui/AppIconProvider.h"

namespace fadewell {

CallAppsModel::CallAppsModel(const std::shared_ptr<Workspace>& workspace, QObject* parent)
    : QAbstractListModel(parent)
{
    AppDirectory directory(workspace);
    for (const auto list : {KnownCallApps::callApps(), KnownCallApps::browsers()}) {
        for (const auto id : list) {
            if (!workspace->location(id)) {
                continue;
            }
            AudioApp app;
            app.id = id;
            app.bundleID = app.id;
            const auto identity = directory.identity(app);
            apps_.push_back({app.id,
                             QString::fromStdString(identity.name),
                             AppIconProvider::address(identity.icon)});
        }
    }
}

void CallAppsModel::setSettings(const CallModeSettings& settings)
{
    if (settings.excludedApps != excluded_) {
        excluded_ = settings.excludedApps;
        if (!apps_.empty()) {
            emit dataChanged(index(0), index(count() - 1), {isOn});
        }
    }
}

int CallAppsModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : count();
}

QVariant CallAppsModel::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid)) {
        return {};
    }
    const auto& app = apps_[static_cast<std::size_t>(index.row())];
    switch (role) {
    case bundleID:
        return QString::fromStdString(app.bundleID);
    case appName:
        return app.name;
    case icon:
        return app.icon;
    case isOn:
        return !excluded_.contains(app.bundleID);
    default:
        return {};
    }
}

QHash<int, QByteArray> CallAppsModel::roleNames() const
{
    return {{bundleID, "bundleID"}, {appName, "name"}, {icon, "icon"}, {isOn, "isOn"}};
}

} // namespace fadewell
