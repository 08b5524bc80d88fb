#pragma once

#include "control/values/AppEntry.h"
#include "control/values/CallModeEntry.h"
#include "control/values/MicrophoneEntry.h"
#include "control/values/OutputEntry.h"

#include <nlohmann/json.hpp>
#include <string>
#include <vector>

namespace fadewell {

/// JSON with its members in the order in which they are listed; what is absent is null.
using OrderedJson = nlohmann::ordered_json;

[[nodiscard]] OrderedJson toJson(const AppEntry& app);
[[nodiscard]] OrderedJson toJson(const OutputEntry& output);
[[nodiscard]] OrderedJson toJson(const MicrophoneEntry& microphone);
[[nodiscard]] OrderedJson toJson(const MicrophoneUseEntry& use);
[[nodiscard]] OrderedJson toJson(const CallModeEntry& callMode);

template <class Entry>
[[nodiscard]] OrderedJson toJsonArray(const std::vector<Entry>& entries)
{
    auto array = OrderedJson::array();
    for (const auto& entry : entries) {
        array.push_back(toJson(entry));
    }
    return array;
}

/// One line without `indent`; never throws, what is no UTF-8 becomes a replacement character.
[[nodiscard]] std::string dump(const OrderedJson& json, int indent = -1);

} // namespace fadewell
