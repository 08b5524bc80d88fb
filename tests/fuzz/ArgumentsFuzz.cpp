// What comes over the bus and from the command line. The first line is what a person typed; each
// further one is a member of a bus dictionary, and an app with an identifier and a name.

#include "control/values/AppMatcher.h"
#include "control/values/BusValues.h"
#include "control/values/LevelArgument.h"
#include "control/values/MixerState.h"
#include "control/values/PlainText.h"
#include "control/values/Tables.h"
#include "tests/fuzz/Fuzz.h"

#include <cmath>

namespace {

using namespace fadewell;
using fuzz::require;

void readLevel(const std::string& typed)
{
    const auto result = LevelArgument::parse(typed);
    if (const auto* level = std::get_if<LevelArgument>(&result)) {
        require(level->value >= (level->isRelative ? -1 : 0) && level->value <= 1,
                "a level's range");
    }
}

void findApp(const std::string& typed, const std::vector<NamedItem>& items)
{
    const AppMatcher matcher(items);
    require(matcher.nearest(typed).size() <= 3, "few suggestions");
    const auto result = matcher.find(typed);
    if (const auto* ambiguous = std::get_if<AppMatcher::Ambiguous>(&result)) {
        require(ambiguous->candidates.size() > 1, "one candidate is a match");
    }
    for (const auto& item : items) {
        const auto exact = matcher.find(item.id);
        const auto* found = std::get_if<NamedItem>(&exact);
        require(item.id.empty() || (found && found->id == item.id), "an exact identifier wins");
    }
}

/// A text that is a number becomes one, so that members have right and wrong types.
QVariant valueOf(const std::string& text)
{
    const auto string = QString::fromStdString(text);
    bool isNumber = false;
    const double number = string.toDouble(&isNumber);
    return isNumber ? QVariant(number) : string == "true" ? QVariant(true) : QVariant(string);
}

void present(const BusMap& map)
{
    MixerState state;
    state.apps = fromBusList<AppEntry>({map, {}});
    state.outputs = fromBusList<OutputEntry>({map});
    fromBus(map, state.microphone);
    fromBus(map, state.callMode);
    const auto app = toBus(state.apps.front());
    AppEntry again;
    fromBus(app, again);
    require(std::isnan(again.volume) || again == state.apps.front(), "an app crosses the bus");
    for (const auto& text : {appTable(state.apps),
                             outputTable(state.outputs),
                             microphoneLine(state.microphone),
                             callModeLine(state.callMode),
                             callSettingsText(state.callMode),
                             describeChanges({}, state)})
    {
        require(text.find('\x1b') == std::string::npos, "nothing reaches the terminal's controls");
    }
    static_cast<void>(dump(toJson(state)));
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const auto lines = fuzz::linesOf(fuzz::textOf(data, size));
    std::vector<NamedItem> items;
    BusMap map;
    for (auto line = lines.begin() + 1; line != lines.end(); ++line) {
        const auto equals = std::min(line->find('='), line->size());
        const auto id = line->substr(0, equals);
        const auto name = line->substr(std::min(equals + 1, line->size()));
        items.push_back({id, name});
        map.insert(QString::fromStdString(id), valueOf(name));
    }
    readLevel(lines.front());
    findApp(lines.front(), items);
    require(displayWidth(plainText(lines.front())) >= 0, "a width");
    present(map);
    return 0;
}
