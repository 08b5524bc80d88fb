#pragma once

#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <string_view>

namespace fadewell {

/// Parses without throwing; absent for anything that is no JSON document.
[[nodiscard]] inline std::optional<nlohmann::json> parseJson(std::string_view text)
{
    auto parsed = nlohmann::json::parse(text, nullptr, /*allow_exceptions=*/false);
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
