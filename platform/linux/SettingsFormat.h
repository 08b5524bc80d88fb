#pragma once

#include "base/UserDefaults.h"

#include <map>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <string_view>

namespace fadewell {

/// How settings are written: one JSON object whose members are the keys, each an object that names
/// its type, so that a person can read and edit it and no value changes its type:
///
///     "volume":   { "type": "number", "value": 0.4 }
///     "isOn":     { "type": "boolean", "value": true }
///     "pane":     { "type": "string", "value": "general" }
///     "inputs":   { "type": "numbers", "value": { "mic": -1 } }
///     "document": { "type": "data", "json": { … } }     or "text", or "base64"
///
/// What JSON can't hold is written so that it reads back equal: bytes that are no UTF-8 as
/// "base64", numbers that are not finite as text.
struct SettingsFormat {
    using Document = std::map<std::string, nlohmann::json, std::less<>>;

    SettingsFormat() = delete;

    [[nodiscard]] static nlohmann::json encode(const UserDefaults::Value& value);
    /// Absent for a type that this version doesn't know.
    [[nodiscard]] static std::optional<UserDefaults::Value> decode(const nlohmann::json& entry);

    [[nodiscard]] static std::string write(const Document& document);
    /// Absent when the text is no JSON object, or nested beyond any use.
    [[nodiscard]] static std::optional<Document> read(std::string_view text);
};

} // namespace fadewell
