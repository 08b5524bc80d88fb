#include "ui/settings/RememberedAppsModel.h"

#include "base/LocalizedText.h"
#include "ui/AppIconProvider.h"

#include <algorithm>

namespace fadewell {
namespace {

bool isSameApp(const RememberedApp& left, const RememberedApp& right)
{
    return left.id == right.id;
}

} // namespace

QString RememberedAppsModel::summaryOf(const AppAudioSettings& settings)
{
    std::vector<std::string> parts{localizedPercent(settings.volume())};
    if (settings.isMuted) {
        parts.push_back(tr("Muted").toStdString());
    }
    if (settings.outputDeviceUID) {
        parts.push_back(settings.outputDeviceName.value_or(tr("Other Output").toStdString()));
    }
    return QString::fromStdString(localizedNarrowList(parts));
}

void RememberedAppsModel::setApps(const std::vector<RememberedApp>& apps)
{
    const auto before = count();
    removeMissing(apps);
    if (std::equal(apps_.begin(), apps_.end(), apps.begin(), apps.end(), isSameApp)) {
        apps_ = apps;
        if (!apps_.empty()) {
            emit dataChanged(index(0), index(count() - 1));
        }
    } else {
        beginResetModel();
        apps_ = apps;
        endResetModel();
    }
    if (count() != before) {
        emit countChanged();
    }
}

void RememberedAppsModel::removeMissing(const std::vector<RememberedApp>& apps)
{
    for (int row = count() - 1; row >= 0; --row) {
        const auto at = apps_.begin() + row;
        const bool stays = std::any_of(
            apps.begin(), apps.end(), [&](const auto& app) { return isSameApp(app, *at); });
        if (!stays) {
            beginRemoveRows({}, row, row);
            apps_.erase(at);
            endRemoveRows();
        }
    }
}

int RememberedAppsModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : count();
}

QVariant RememberedAppsModel::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid)) {
        return {};
    }
    const auto& app = apps_[static_cast<std::size_t>(index.row())];
    switch (role) {
    case appID:
        return QString::fromStdString(app.id);
    case appName:
        return QString::fromStdString(app.name);
    case icon:
        return AppIconProvider::address(app.icon);
    case summary:
        return summaryOf(app.settings);
    default:
        return {};
    }
}

QHash<int, QByteArray> RememberedAppsModel::roleNames() const
{
    return {{appID, "appID"}, {appName, "name"}, {icon, "icon"}, {summary, "summary"}};
}

} // namespace fadewell
