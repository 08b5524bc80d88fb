#include "ui/tray/TrayMenu.h"

#include <QCoreApplication>

namespace fadewell {
namespace {

QString text(const char* source)
{
    return QCoreApplication::translate("TrayMenu", source);
}

/// The identifier is the entry's place in the full menu: it stays when others are left out.
TrayMenuEntry entry(TrayCommand command, const char* source)
{
    return {.id = static_cast<int>(command), .command = command, .text = text(source)};
}

TrayMenuEntry separator(int id)
{
    constexpr int firstSeparator = 100;
    return {.id = firstSeparator + id};
}

TrayMenuEntry microphoneSwitch(const MixerModel& model)
{
    auto microphone =
        entry(TrayCommand::toggleMicrophone, QT_TRANSLATE_NOOP("TrayMenu", "Microphone"));
    microphone.isChecked = !model.microphone.get().isMuted;
    microphone.isEnabled = canToggleMicrophone(model);
    return microphone;
}

TrayMenuEntry callModeSwitch(const MixerModel& model)
{
    auto callMode = entry(TrayCommand::toggleCallMode, QT_TRANSLATE_NOOP("TrayMenu", "Call Mode"));
    callMode.isChecked = model.isCallModeActive.get();
    return callMode;
}

} // namespace

std::vector<TrayMenuEntry> trayMenu(const MixerModel& model, const AppWindows& windows)
{
    std::vector<TrayMenuEntry> entries{
        entry(TrayCommand::openMixer, QT_TRANSLATE_NOOP("TrayMenu", "Open Mixer")),
        separator(1),
        microphoneSwitch(model),
        callModeSwitch(model),
        separator(2)};
    if (windows.offers(AppWindow::settings)) {
        entries.push_back(entry(TrayCommand::settings, QT_TRANSLATE_NOOP("TrayMenu", "Settings…")));
    }
    if (windows.offers(AppWindow::about)) {
        entries.push_back(
            entry(TrayCommand::about, QT_TRANSLATE_NOOP("TrayMenu", "About Fadewell")));
    }
    if (entries.back().command != TrayCommand::none) {
        entries.push_back(separator(3));
    }
    entries.push_back(entry(TrayCommand::quit, QT_TRANSLATE_NOOP("TrayMenu", "Quit Fadewell")));
    return entries;
}

bool canToggleMicrophone(const MixerModel& model)
{
    const auto& microphone = model.microphone.get();
    return microphone.isMuted || microphone.canMute;
}

} // namespace fadewell
