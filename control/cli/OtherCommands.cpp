#include "control/cli/Commands.h"
#include "control/cli/Failure.h"
#include "control/cli/Selection.h"
#include "control/values/BusNames.h"
#include "control/values/LevelArgument.h"
#include "control/values/PlainText.h"
#include "control/values/Tables.h"

#include <QDBusServiceWatcher>
#include <QEventLoop>
#include <QTimer>

#include <algorithm>
#include <ctime>
#include <fmt/format.h>
#include <map>

namespace fadewell::cli {
namespace {

Output open(const MixerClient& client, const char* method)
{
    client.call(method, {qEnvironmentVariable("XDG_ACTIVATION_TOKEN")});
    return {OrderedJson{{"isShown", true}}, ""};
}

/// The new volume of the microphone; a change starts from what it is.
double microphoneLevel(const MixerClient& client, const std::string& value)
{
    const auto parsed = LevelArgument::parse(value);
    const auto* level = std::get_if<LevelArgument>(&parsed);
    if (level == nullptr || !level->isRelative) {
        return chooseLevel(value);
    }
    const auto current = client.entry<MicrophoneEntry>("Microphone").volume.value_or(0);
    return std::clamp(current + level->value, 0.0, 1.0);
}

QStringList chooseCallApps(const MixerClient& client, const std::vector<std::string>& texts)
{
    std::vector<std::string> ids;
    for (const auto& text : texts) {
        ids.push_back(chooseCallApp(client, text).id);
    }
    return toQStringList(ids);
}

} // namespace

Output microphone(const MixerClient& client, const std::string& action, const std::string& value)
{
    if (!value.empty() && action != "volume") {
        throw Failure(ExitCode::usage, "Only \"microphone volume\" takes a value.");
    }
    if (action == "toggle") {
        client.call("ToggleMicrophone");
    } else if (action == "on" || action == "off") {
        client.call("SetMicrophoneMuted", {action == "off"});
    } else if (!value.empty()) {
        client.call("SetMicrophoneVolume", {microphoneLevel(client, value)});
    }
    const auto entry = client.entry<MicrophoneEntry>("Microphone");
    return {toJson(entry), microphoneLine(entry) + microphoneUses(entry, std::time(nullptr))};
}

Output callMode(const MixerClient& client, const std::string& mode)
{
    if (!mode.empty()) {
        client.call("SetCallMode", {QString::fromStdString(mode)});
    }
    const auto entry = client.entry<CallModeEntry>("CallMode");
    return {toJson(entry), callModeLine(entry)};
}

Output callSettings(const MixerClient& client, const CallSettingsChange& change)
{
    BusMap changes;
    if (!change.automatic.empty()) {
        changes.insert("isAutomatic", change.automatic == "on");
    }
    if (!change.level.empty()) {
        changes.insert("level", chooseLevel(change.level));
    }
    if (!change.exclude.empty()) {
        changes.insert("exclude", chooseCallApps(client, change.exclude));
    }
    if (!change.include.empty()) {
        changes.insert("include", chooseCallApps(client, change.include));
    }
    if (!changes.isEmpty()) {
        client.call("SetCallSettings", {changes});
    }
    const auto entry = client.entry<CallModeEntry>("CallMode");
    return {toJson(entry), callSettingsText(entry)};
}

Output show(const MixerClient& client)
{
    return open(client, "Show");
}

Output settings(const MixerClient& client)
{
    return open(client, "ShowSettings");
}

Output permission(const MixerClient& client)
{
    const bool isAllowed = client.call("CheckPermission").value(0).toBool();
    return {OrderedJson{{"isAllowed", isAllowed}},
            isAllowed ? "Fadewell may change other programs' sound.\n"
                      : "Fadewell may not change other programs' sound: the sound server restricts "
                        "it. See \"fadewellctl doctor\".\n"};
}

Output loginItem(const MixerClient& client, const std::string& action)
{
    static const std::map<std::string, const char*> texts{
        {"notRegistered", "Fadewell doesn't start with your session.\n"},
        {"enabled", "Fadewell starts with your session.\n"},
        {"requiresApproval",
         "Fadewell is to start with your session, but that is switched off or not yet allowed in "
         "the desktop's own settings.\n"},
        {"notFound",
         "Fadewell can't start with your session: there is no place to say so, or the "
         "program is not where it was.\n"}};
    const auto reply =
        action.empty() ? client.call("LoginItem") : client.call("SetLoginItem", {action == "on"});
    const auto status = reply.value(0).toString().toStdString();
    const auto text = texts.find(status);
    return {OrderedJson{{"status", status}},
            text == texts.end() ? plainText(status) + '\n' : text->second};
}

Output quit(const MixerClient& client)
{
    constexpr int patience = 15000; // milliseconds, for taking the taps down
    QEventLoop loop;
    QDBusServiceWatcher watcher(
        bus::service, client.connection(), QDBusServiceWatcher::WatchForUnregistration);
    QObject::connect(
        &watcher, &QDBusServiceWatcher::serviceUnregistered, &loop, [&] { loop.exit(0); });
    QTimer::singleShot(patience, &loop, [&] { loop.exit(1); });
    client.call("Quit");
    if (client.isRunning() && loop.exec() != 0) {
        throw Failure(ExitCode::failure, "Fadewell is still running.");
    }
    return {OrderedJson{{"isRunning", false}}, "Fadewell has quit.\n"};
}

} // namespace fadewell::cli
