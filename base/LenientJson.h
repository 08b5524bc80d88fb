#pragma once

#include <algorithm>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <string_view>

namespace fadewell {

/// Whether a number is well formed but too large for a double.
[[nodiscard]] inline bool overflowsDouble(std::string_view number)
{
    try {
        return nlohmann::json::parse(number).is_discarded();
    } catch (const nlohmann::json::out_of_range&) {
        return true;
    } catch (const nlohmann::json::exception&) {
        return false;
    }
}

/// The document with null in place of each number that overflows.
[[nodiscard]] inline std::string withoutOverflowingNumbers(std::string_view text)
{
    std::string result;
    bool inString = false;
    for (std::size_t at = 0; at < text.size();) {
        std::size_t length = 1;
        if (inString) {
            length = text[at] == '\\' ? 2 : 1;
            inString = text[at] != '"';
        } else if (text[at] == '"') {
            inString = true;
        } else if (std::string_view("-0123456789").find(text[at]) != std::string_view::npos) {
            length = std::min(text.find_first_not_of("+-.0123456789Ee", at), text.size()) - at;
        }
        const auto token = text.substr(at, length);
        result += !inString && length > 1 && overflowsDouble(token) ? "null" : token;
        at += length;
    }
    return result;
}

/// Parses without throwing; absent for anything that is no JSON document. A number too large for a
/// double counts as null, so that it costs its member and not the whole document.
[[nodiscard]] inline std::optional<nlohmann::json> parseJson(std::string_view text)
{
    auto parsed = nlohmann::json::parse(text, nullptr, /*allow_exceptions=*/false);
    if (parsed.is_discarded()) {
        parsed = nlohmann::json::parse(
            withoutOverflowingNumbers(text), nullptr, /*allow_exceptions=*/false);
    }
    return parsed.is_discarded() ? std::nullopt : std::optional(std::move(parsed));
}

/// Writes without throwing: what is no UTF-8 becomes a replacement character.
[[nodiscard]] inline std::string dumpJson(const nlohmann::json& value, int indent = -1)
{
    return value.dump(indent, ' ', false, nlohmann::json::error_handler_t::replace);
}

/// A member of an object when it is there and of this type; absent otherwise, also for null.
[[nodiscard]] inline std::optional<double> numberMember(const nlohmann::json& object,
                                                        const char* name)
{
    const auto found = object.find(name);
    return found != object.end() && found->is_number() ? std::optional(found->get<double>())
                                                       : std::nullopt;
}
[[nodiscard]] inline std::optional<bool> boolMember(const nlohmann::json& object, const char* name)
{
    const auto found = object.find(name);
    return found != object.end() && found->is_boolean() ? std::optional(found->get<bool>())
                                                        : std::nullopt;
}
[[nodiscard]] inline std::optional<std::string> stringMember(const nlohmann::json& object,
                                                             const char* name)
{
    const auto found = object.find(name);
    return found != object.end() && found->is_string() ? std::optional(found->get<std::string>())
                                                       : std::nullopt;
}

} // namespace fadewell
