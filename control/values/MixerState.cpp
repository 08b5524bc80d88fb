#include "control/values/MixerState.h"

#include "control/values/PlainText.h"
#include "control/values/Tables.h"

#include <algorithm>

namespace fadewell {
namespace {

template <class Entry>
const Entry* findByID(const std::vector<Entry>& entries, const std::string& id)
{
    const auto found = std::find_if(
        entries.begin(), entries.end(), [&](const auto& entry) { return entry.id == id; });
    return found == entries.end() ? nullptr : &*found;
}

std::string appChanges(const std::vector<AppEntry>& before, const std::vector<AppEntry>& after)
{
    std::string text;
    for (const auto& app : before) {
        if (!findByID(after, app.id)) {
            text += plainText(app.name) + ": gone\n";
        }
    }
    for (const auto& app : after) {
        const auto* old = findByID(before, app.id);
        if (!old || appLine(*old) != appLine(app)) {
            text += appLine(app);
        }
    }
    return text;
}

std::string outputChanges(const std::vector<OutputEntry>& before,
                          const std::vector<OutputEntry>& after)
{
    std::string text;
    for (const auto& output : before) {
        if (!findByID(after, output.id)) {
            text += "Output " + plainText(output.name) + ": gone\n";
        }
    }
    for (const auto& output : after) {
        const auto* old = findByID(before, output.id);
        if (!old) {
            text += "Output " + plainText(output.name) + ": new\n";
        }
        if (output.isDefault && !(old && old->isDefault)) {
            text += "Default output: " + plainText(output.name) + '\n';
        }
    }
    return text;
}

} // namespace

OrderedJson toJson(const MixerState& state)
{
    return {{"apps", toJsonArray(state.apps)},
            {"outputs", toJsonArray(state.outputs)},
            {"microphone", toJson(state.microphone)},
            {"callMode", toJson(state.callMode)}};
}

std::string describeChanges(const MixerState& before, const MixerState& after)
{
    std::string text = appChanges(before.apps, after.apps);
    text += outputChanges(before.outputs, after.outputs);
    if (before.microphone != after.microphone) {
        text += microphoneLine(after.microphone);
    }
    if (callModeLine(before.callMode) != callModeLine(after.callMode)) {
        text += callModeLine(after.callMode);
    }
    if (callSettingsText(before.callMode) != callSettingsText(after.callMode)) {
        text += callSettingsText(after.callMode);
    }
    return text;
}

} // namespace fadewell
