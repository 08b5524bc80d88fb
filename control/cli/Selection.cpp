#include "control/cli/Selection.h"

#include "control/cli/Failure.h"
#include "control/values/AppMatcher.h"
#include "control/values/LevelArgument.h"
#include "control/values/PlainText.h"

#include <fmt/format.h>
#include <utility>
#include <vector>

namespace fadewell::cli {
namespace {

std::string listed(const std::vector<NamedItem>& items)
{
    std::string text;
    for (const auto& item : items) {
        text += fmt::format("\n  {}  ({})", plainText(item.name), plainText(item.id));
    }
    return text;
}

/// `what` as in "There is no app …"; `list` is the command that lists them.
NamedItem choose(std::vector<NamedItem> items,
                 const std::string& text,
                 const char* what,
                 const char* list,
                 ExitCode unknownCode)
{
    const auto result = AppMatcher(std::move(items)).find(text);
    if (const auto* item = std::get_if<NamedItem>(&result)) {
        return *item;
    }
    if (const auto* ambiguous = std::get_if<AppMatcher::Ambiguous>(&result)) {
        throw Failure(ExitCode::ambiguous,
                      fmt::format("\"{}\" could be more than one {}:{}",
                                  plainText(text),
                                  what,
                                  listed(ambiguous->candidates)));
    }
    const auto& nearest = std::get<AppMatcher::Unknown>(result).nearest;
    std::string message = fmt::format("There is no {} \"{}\".", what, plainText(text));
    message += nearest.empty() ? fmt::format(" See: fadewellctl {}", list)
                               : " Did you mean:" + listed(nearest);
    throw Failure(unknownCode, message);
}

} // namespace

NamedItem chooseApp(const MixerClient& client, const std::string& text)
{
    return choose(client.list<NamedItem>("KnownApps"), text, "app", "apps", ExitCode::unknownApp);
}

NamedItem chooseOutput(const MixerClient& client, const std::string& text)
{
    return choose(client.list<NamedItem>("Outputs"), text, "output", "outputs", ExitCode::failure);
}

NamedItem chooseCallApp(const MixerClient& client, const std::string& text)
{
    return choose(client.list<NamedItem>("CallApps"),
                  text,
                  "call app",
                  "complete call-apps",
                  ExitCode::unknownApp);
}

double chooseLevel(const std::string& text)
{
    const auto parsed = LevelArgument::parse(text);
    const auto* level = std::get_if<LevelArgument>(&parsed);
    if (level != nullptr && !level->isRelative) {
        return level->value;
    }
    throw Failure(ExitCode::usage,
                  fmt::format("\"{}\" is no level from 0% to 100% (40% or 0.4).", plainText(text)));
}

} // namespace fadewell::cli
