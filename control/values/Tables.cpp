#include "control/values/Tables.h"

#include "base/LocalizedText.h"
#include "control/values/PlainText.h"
#include "control/values/TextTable.h"

#include <algorithm>
#include <ctime>
#include <fmt/chrono.h>
#include <fmt/format.h>
#include <map>

namespace fadewell {
namespace {

using Align = TextTable::Align;

std::string outputText(const AppEntry& app)
{
    if (!app.outputDeviceUID) {
        return "system";
    }
    return app.outputDeviceName.value_or(*app.outputDeviceUID);
}

std::string stateText(const AppEntry& app)
{
    std::vector<std::string> words;
    if (app.callStatus) {
        words.emplace_back(*app.callStatus == "inCall" ? "in call" : "lowered");
    }
    if (app.isUsingMicrophone) {
        words.emplace_back("microphone");
    }
    if (!app.isTappable) {
        words.push_back(untappableText(app.untappableReason.value_or("")));
    }
    return fmt::format("{}", fmt::join(words, ", "));
}

std::string onOff(bool on)
{
    return on ? "on" : "off";
}

} // namespace

std::string untappableText(const std::string& reason)
{
    static const std::map<std::string, std::string> texts{
        {"unmanaged", "connects itself, can't be controlled"},
        {"passthrough", "sends encoded sound, can't be controlled"},
        {"exclusive", "holds its device for itself, can't be controlled"},
        {"pinned", "asks not to be moved, can't be controlled"},
        {"contested", "is kept elsewhere by another program, can't be controlled"}};
    const auto found = texts.find(reason);
    return found == texts.end() ? "can't be controlled" : found->second;
}

std::string appTable(const std::vector<AppEntry>& apps)
{
    if (apps.empty()) {
        return "No app is playing.\n";
    }
    TextTable table(
        {{"APP"}, {"PLAYING"}, {"VOLUME", Align::right}, {"MUTED"}, {"OUTPUT"}, {"STATE"}, {"ID"}});
    for (const auto& app : apps) {
        table.add({app.name,
                   app.isPlaying ? "yes" : "no",
                   app.isTappable ? localizedPercent(app.volume) : "-",
                   app.isTappable ? (app.isMuted ? "yes" : "no") : "-",
                   app.isTappable ? outputText(app) : "-",
                   stateText(app),
                   app.id});
    }
    return table.render();
}

std::string outputTable(const std::vector<OutputEntry>& outputs)
{
    if (outputs.empty()) {
        return "There are no outputs.\n";
    }
    TextTable table({{"OUTPUT"}, {"KIND"}, {"DEFAULT"}, {"UID"}});
    for (const auto& output : outputs) {
        table.add({output.name, output.kind, output.isDefault ? "yes" : "", output.id});
    }
    return table.render();
}

std::string appLine(const AppEntry& app)
{
    if (!app.isTappable) {
        return fmt::format("{}: {}\n", plainText(app.name), stateText(app));
    }
    return fmt::format("{}: {}{}, output {}{}{}\n",
                       plainText(app.name),
                       localizedPercent(app.volume),
                       app.isMuted ? " (muted)" : "",
                       plainText(outputText(app)),
                       app.isPlaying ? ", playing" : "",
                       app.callStatus ? fmt::format(", {}", stateText(app)) : "");
}

std::string microphoneLine(const MicrophoneEntry& microphone)
{
    if (!microphone.deviceName && !microphone.canMute) {
        return "Microphone: none\n";
    }
    std::string text = fmt::format("Microphone {}: {}",
                                   plainText(microphone.deviceName.value_or("(no name)")),
                                   microphone.isMuted ? "off (muted)" : "on");
    if (microphone.volume) {
        text += ", volume " + localizedPercent(*microphone.volume);
    }
    if (!microphone.users.empty()) {
        text += ", used by " + plainText(localizedList(microphone.users));
    }
    return text + '\n';
}

std::string microphoneUses(const MicrophoneEntry& microphone, std::int64_t now)
{
    std::string text;
    for (const auto& use : microphone.uses) {
        const auto began = static_cast<std::time_t>(use.since);
        const auto seconds = std::max<std::int64_t>(now - use.since, 0);
        std::tm local{};
        localtime_r(&began, &local);
        text += fmt::format("  {} since {:%H:%M:%S}, {}:{:02}:{:02}\n",
                            plainText(use.name),
                            local,
                            seconds / 3600,
                            seconds / 60 % 60,
                            seconds % 60);
    }
    return text;
}

std::string callModeLine(const CallModeEntry& callMode)
{
    std::string text = "Call mode: " + onOff(callMode.isActive);
    text += callMode.override_ ? " (chosen by you)" : "";
    if (callMode.isDetected) {
        text += callMode.names.empty() ? ", call detected"
                                       : ", in a call: " + plainText(localizedList(callMode.names));
    }
    return text + '\n';
}

std::string callSettingsText(const CallModeEntry& callMode)
{
    std::vector<std::string> excluded;
    for (const auto& id : callMode.excludedApps) {
        excluded.push_back(plainText(id));
    }
    return fmt::format("Automatic: {}\nLevel: {}\nExcluded: {}\n",
                       onOff(callMode.isAutomatic),
                       localizedPercent(callMode.level),
                       excluded.empty() ? "none" : fmt::format("{}", fmt::join(excluded, ", ")));
}

} // namespace fadewell
