#include "ui/settings/GeneralPaneModel.h"

namespace fadewell {
namespace {

constexpr int lookInterval = 1000; // milliseconds
constexpr const char* showsIconKey = "showInMenuBar";

QString known(const std::optional<QString>& text)
{
    return text && !text->isEmpty() ? *text : QStringLiteral("?");
}

} // namespace

GeneralPaneModel::GeneralPaneModel(const SettingsParts& parts)
    : parts_(parts)
{
    looking_.setInterval(lookInterval);
    connect(&looking_, &QTimer::timeout, this, &GeneralPaneModel::look);
    if (parts_.loginItem) {
        loginObserver_ = parts_.loginItem->status.observe([this](auto) { emit changed(); });
    }
}

void GeneralPaneModel::appear()
{
    look();
    looking_.start();
    if (parts_.audioAccess) {
        permissionCheck_ = parts_.audioAccess->check([this](bool isAllowed) {
            hasAudioPermission_ = isAllowed;
            emit changed();
        });
    }
}

void GeneralPaneModel::disappear()
{
    looking_.stop();
}

void GeneralPaneModel::look()
{
    Surroundings seen;
    seen.isTrayMissing = parts_.isTrayMissing && parts_.isTrayMissing();
    if (parts_.soundServer) {
        seen.server = parts_.soundServer->soundServer();
    }
    if (seen != now_) {
        now_ = seen;
        emit changed();
    }
}

bool GeneralPaneModel::opensAtLogin() const
{
    return parts_.loginItem && parts_.loginItem->isSwitchedOn();
}

bool GeneralPaneModel::needsLoginApproval() const
{
    return parts_.loginItem && parts_.loginItem->status.get() == LoginItemStatus::requiresApproval;
}

QString GeneralPaneModel::loginItemsTitle() const
{
    return parts_.systemPages->openTitle(SystemPage::loginItems);
}

bool GeneralPaneModel::showsIcon() const
{
    return parts_.defaults->get<bool>(showsIconKey).value_or(true);
}

QString GeneralPaneModel::permissionTitle() const
{
    return parts_.systemPages->openTitle(SystemPage::audioPermission);
}

QString GeneralPaneModel::soundServer() const
{
    if (now_.server.name.empty()) {
        return {};
    }
    const auto name = QString::fromStdString(now_.server.name);
    const auto version = QString::fromStdString(now_.server.version);
    const auto full = version.isEmpty() ? name : name + ' ' + version;
    return now_.server.isConnected ? tr("%1, connected").arg(full)
                                   : tr("%1, not running").arg(name);
}

QString GeneralPaneModel::version() const
{
    return QStringLiteral("%1 (%2)").arg(known(parts_.version), known(parts_.build));
}

void GeneralPaneModel::setOpensAtLogin(bool opens)
{
    if (parts_.loginItem) {
        parts_.loginItem->setEnabled(opens);
    }
}

void GeneralPaneModel::setShowsIcon(bool shows)
{
    parts_.defaults->set(showsIconKey, shows);
    if (parts_.setIconShown) {
        parts_.setIconShown(shows);
    }
    look();
    emit changed();
}

void GeneralPaneModel::openLoginItems()
{
    parts_.systemPages->open(SystemPage::loginItems);
}

void GeneralPaneModel::openPermission()
{
    parts_.systemPages->open(SystemPage::audioPermission);
}

void GeneralPaneModel::openMixer()
{
    parts_.openMixer();
}

void GeneralPaneModel::showDiagnostics()
{
    parts_.showDiagnostics();
}

void GeneralPaneModel::showAbout()
{
    parts_.showAbout();
}

} // namespace fadewell
