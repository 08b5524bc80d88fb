#include "control/cli/Commands.h"
#include "control/cli/Failure.h"
#include "control/cli/Selection.h"
#include "control/values/LevelArgument.h"
#include "control/values/PlainText.h"
#include "control/values/Tables.h"

#include <fmt/format.h>

namespace fadewell::cli {
namespace {

QVariant text(const std::string& value)
{
    return QString::fromStdString(value);
}

Output show(const MixerClient& client, const NamedItem& app)
{
    const auto entry = client.entry<AppEntry>("App", {text(app.id)});
    return {toJson(entry), appLine(entry)};
}

void applyVolume(const MixerClient& client, const NamedItem& app, const std::string& value)
{
    const auto parsed = LevelArgument::parse(value);
    if (const auto* level = std::get_if<LevelArgument>(&parsed)) {
        client.call(level->isRelative ? "ChangeVolume" : "SetVolume", {text(app.id), level->value});
        return;
    }
    const bool isNumber =
        std::get<LevelArgument::Error>(parsed) == LevelArgument::Error::outOfRange;
    throw Failure(ExitCode::usage,
                  fmt::format("\"{}\" is {}: the volume goes from 0% to 100% (40% or 0.4), changes "
                              "are written +10% or -10%.",
                              plainText(value),
                              isNumber ? "out of range" : "no volume"));
}

} // namespace

Output apps(const MixerClient& client)
{
    const auto entries = client.list<AppEntry>("Apps");
    return {toJsonArray(entries), appTable(entries)};
}

Output outputs(const MixerClient& client)
{
    const auto entries = client.list<OutputEntry>("Outputs");
    return {toJsonArray(entries), outputTable(entries)};
}

Output volume(const MixerClient& client, const std::string& app, const std::string& value)
{
    const auto chosen = chooseApp(client, app);
    if (!value.empty()) {
        applyVolume(client, chosen, value);
    }
    return show(client, chosen);
}

Output mute(const MixerClient& client, const std::string& app, const std::string& action)
{
    const auto chosen = chooseApp(client, app);
    if (action == "toggle") {
        client.call("ToggleMuted", {text(chosen.id)});
    } else {
        client.call("SetMuted", {text(chosen.id), action == "on"});
    }
    return show(client, chosen);
}

Output output(const MixerClient& client, const std::string& app, const std::string& output)
{
    const auto chosen = chooseApp(client, app);
    const std::string uid = output == "system" ? "" : chooseOutput(client, output).id;
    client.call("SetOutput", {text(chosen.id), text(uid)});
    return show(client, chosen);
}

Output stepFrontmost(const MixerClient& client, bool isRaising)
{
    const auto answer = client.call(isRaising ? "RaiseFrontmost" : "LowerFrontmost");
    return show(client, {answer.value(0).toString().toStdString(), {}});
}

Output forget(const MixerClient& client, const std::string& app)
{
    const auto chosen = chooseApp(client, app);
    client.call("Forget", {text(chosen.id)});
    return {OrderedJson{{"forgotten", OrderedJson::array({chosen.id})}},
            plainText(chosen.name) + ": forgotten\n"};
}

Output forgetAll(const MixerClient& client)
{
    auto ids = OrderedJson::array();
    for (const auto& app : client.list<AppEntry>("Remembered")) {
        ids.push_back(app.id);
    }
    client.call("ForgetAll");
    auto summary = fmt::format("Forgotten: {} app{}\n", ids.size(), ids.size() == 1 ? "" : "s");
    return {OrderedJson{{"forgotten", std::move(ids)}}, std::move(summary)};
}

Output complete(const MixerClient& client, const std::string& what)
{
    const auto isAbout = [&](const char* topic) {
        return what == topic;
    };
    const char* method = isAbout("apps")      ? "KnownApps"
                         : isAbout("outputs") ? "Outputs"
                                              : "CallApps";
    auto words = OrderedJson::array();
    std::string lines;
    for (const auto& item : client.list<NamedItem>(method)) {
        words.push_back(item.id);
        lines += plainText(item.id) + '\n';
    }
    return {std::move(words), std::move(lines)};
}

} // namespace fadewell::cli
