#include "ui/settings/SettingsModel.h"

#include <algorithm>
#include <array>
#include <utility>

namespace fadewell {
namespace {

constexpr const char* paneKey = "settingsPane";
constexpr std::array<const char*, 4> panes{"general", "calls", "apps", "shortcuts"};

} // namespace

SettingsModel::SettingsModel(SettingsParts parts)
    : parts_(std::move(parts))
    , general_(parts_)
    , calls_(parts_)
    , apps_(parts_)
    , shortcuts_(parts_)
{}

QString SettingsModel::pane() const
{
    const auto stored = parts_.defaults->get<std::string>(paneKey).value_or(panes.front());
    const bool isPane = std::find(panes.begin(), panes.end(), stored) != panes.end();
    return QString::fromStdString(isPane ? stored : panes.front());
}

void SettingsModel::setPane(const QString& pane)
{
    if (pane != this->pane()) {
        parts_.defaults->set(paneKey, pane.toStdString());
        emit paneChanged();
    }
}

} // namespace fadewell
