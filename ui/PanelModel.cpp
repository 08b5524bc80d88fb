#include "ui/PanelModel.h"

#include "base/LocalizedText.h"
#include "ui/OutputChoice.h"
#include "ui/PanelRows.h"

#include <algorithm>
#include <set>
#include <utility>

namespace fadewell {
namespace {

constexpr int untappableInterval = 1000; // milliseconds

} // namespace

PanelModel::PanelModel(PanelWindow::Parts parts, PanelWindow::Actions actions)
    : parts_(std::move(parts))
    , actions_(std::move(actions))
    , untappableApps_(parts_.workspace, parts_.tappability)
{
    untappableTimer_.setInterval(untappableInterval);
    connect(&untappableTimer_, &QTimer::timeout, this, &PanelModel::showRows);
    fillMoreMenu();
}

void PanelModel::setActive(bool isActive)
{
    if (isActive == isActive_) {
        return;
    }
    if (isActive) {
        observe();
        showRows();
    } else {
        subscriptions_.clear();
        untappableTimer_.stop();
    }
    isActive_ = isActive;
    emit changed();
}

void PanelModel::observe()
{
    auto& model = *parts_.model;
    const auto rowsChanged = [this](const auto&) {
        showRows();
        fillOutputMenu();
    };
    const auto valueChanged = [this](const auto&) {
        emit changed();
    };
    subscriptions_.push_back(model.apps.observe(rowsChanged));
    subscriptions_.push_back(model.outputDevices.observe(rowsChanged));
    subscriptions_.push_back(model.defaultOutputUID.observe(rowsChanged));
    subscriptions_.push_back(model.needsAudioPermission.observe(valueChanged));
    subscriptions_.push_back(model.isCallModeActive.observe(valueChanged));
    subscriptions_.push_back(model.isCallDetected.observe(valueChanged));
    subscriptions_.push_back(model.callAppNames.observe(valueChanged));
    subscriptions_.push_back(model.microphone.observe(valueChanged));
    subscriptions_.push_back(model.microphoneUserNames.observe(valueChanged));
    if (parts_.tappability) {
        untappableTimer_.start();
    }
}

void PanelModel::showRows()
{
    const auto& model = *parts_.model;
    const auto& devices = model.outputDevices.get();
    const auto& defaultOutput = model.defaultOutputUID.get();
    std::vector<AppRowView> rows;
    std::set<std::string> ids;
    for (const auto& app : model.apps.get()) {
        rows.push_back(PanelRows::row(app, devices, defaultOutput));
        ids.insert(app.id);
    }
    // An app with a row has streams that can be controlled beside the one that can't.
    for (const auto& untappable : untappableApps_.list()) {
        if (ids.insert(untappable.app.id).second) {
            rows.push_back(PanelRows::row(untappable, devices, defaultOutput));
        }
    }
    apps_.setRows(rows);
}

void PanelModel::fillMoreMenu()
{
    std::vector<MenuModel::Entry> entries;
    if (actions_.openSettings) {
        entries.push_back(
            {.title = tr("Settings…"), .shortcut = QStringLiteral("Ctrl+,"), .choose = [this] {
                 openSettings();
             }});
    }
    if (actions_.showAbout) {
        entries.push_back({.title = tr("About Fadewell"), .choose = [this] {
                               runAndClose(actions_.showAbout);
                           }});
    }
    if (actions_.quit) {
        if (!entries.empty()) {
            entries.back().hasDividerBelow = true;
        }
        entries.push_back(
            {.title = tr("Quit Fadewell"), .shortcut = QStringLiteral("Ctrl+Q"), .choose = [this] {
                 quit();
             }});
    }
    moreMenu_.setEntries(std::move(entries));
}

void PanelModel::prepareOutputMenu(const QString& appID)
{
    outputMenuAppID_ = appID.toStdString();
    fillOutputMenu();
}

void PanelModel::fillOutputMenu()
{
    auto& model = *parts_.model;
    std::vector<MenuModel::Entry> entries;
    const auto& apps = model.apps.get();
    if (std::ranges::find(apps, outputMenuAppID_, &AppRowState::id) == apps.end()) {
        outputMenu_.setEntries({}); // Its row is gone.
        return;
    }
    for (const auto& choice :
         outputChoices(model.outputDevices.get(), model.settings(outputMenuAppID_)))
    {
        const auto name = QString::fromStdString(choice.name.value_or(""));
        const auto choose = [this, uid = choice.uid, isSelected = choice.isSelected] {
            if (isSelected) {
                return; // Also keeps the remembered name of a device that isn't connected.
            }
            auto& mixer = *parts_.model;
            const auto deviceName = uid ? mixer.outputDeviceName(*uid) : std::nullopt;
            mixer.setOutput(uid, deviceName, outputMenuAppID_);
        };
        entries.push_back({.title = !choice.uid          ? tr("Use System Setting")
                                    : choice.isConnected ? name
                                                         : tr("%1 (Not Connected)").arg(name),
                           .symbol = QString::fromLatin1(choice.symbol.data(),
                                                         static_cast<int>(choice.symbol.size())),
                           .isCheckable = true,
                           .isChecked = choice.isSelected,
                           .hasDividerBelow = !choice.uid,
                           .choose = choose});
    }
    outputMenu_.setEntries(std::move(entries));
}

QString PanelModel::fullPercent() const
{
    return QString::fromStdString(localizedPercent(1));
}

bool PanelModel::needsAudioPermission() const
{
    return parts_.model->needsAudioPermission.get();
}

bool PanelModel::isCallModeActive() const
{
    return parts_.model->isCallModeActive.get();
}

QString PanelModel::callModeCaption() const
{
    const auto& model = *parts_.model;
    const auto& names = model.callAppNames.get();
    if (!model.isCallModeActive.get()) {
        return tr("Lowers other apps when a call starts.");
    }
    if (model.isCallDetected.get() && !names.empty()) {
        return tr("On during your call in %1.").arg(QString::fromStdString(localizedList(names)));
    }
    return tr("On until you turn it off.");
}

bool PanelModel::isMicrophoneOn() const
{
    return !parts_.model->microphone.get().isMuted;
}

bool PanelModel::canSwitchMicrophone() const
{
    const auto& microphone = parts_.model->microphone.get();
    return microphone.isMuted || microphone.canMute;
}

QString PanelModel::microphoneCaption() const
{
    const auto& microphone = parts_.model->microphone.get();
    if (microphone.isMuted) {
        return tr("Off for all apps.");
    }
    return microphone.deviceName ? QString::fromStdString(*microphone.deviceName)
                                 : tr("No Microphone");
}

bool PanelModel::hasMicrophoneVolume() const
{
    return parts_.model->microphone.get().volume.has_value();
}

double PanelModel::microphoneVolume() const
{
    return parts_.model->microphone.get().volume.value_or(0);
}

QString PanelModel::microphoneUsers() const
{
    const auto& names = parts_.model->microphoneUserNames.get();
    return names.empty() ? QString()
                         : tr("In use by %1.").arg(QString::fromStdString(localizedList(names)));
}

void PanelModel::setVolume(const QString& appID, double volume)
{
    parts_.model->setVolume(volume, appID.toStdString());
}

void PanelModel::setMuted(const QString& appID, bool isMuted)
{
    parts_.model->setMuted(isMuted, appID.toStdString());
}

void PanelModel::setCallModeActive(bool isActive)
{
    parts_.model->setCallModeActive(isActive);
}

void PanelModel::setMicrophoneOn(bool isOn)
{
    if (isOn != isMicrophoneOn()) {
        parts_.model->toggleMicrophone();
    }
}

void PanelModel::setMicrophoneVolume(double volume)
{
    parts_.model->setMicrophoneVolume(volume);
}

void PanelModel::openSettings()
{
    runAndClose(actions_.openSettings);
}

void PanelModel::openPermissionSettings()
{
    runAndClose(actions_.openPermissionSettings);
}

void PanelModel::quit()
{
    runAndClose(actions_.quit);
}

void PanelModel::runAndClose(const std::function<void()>& action)
{
    if (action) {
        emit closeRequested();
        action();
    }
}

} // namespace fadewell
