#include "platform/linux/SettingsFormat.h"

#include "base/LenientJson.h"
#include "platform/linux/Base64.h"
#include "platform/linux/Utf8.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace fadewell {
namespace {

using nlohmann::json;
using Value = UserDefaults::Value;

/// Deeper nesting is no setting of ours, and writing it again could exhaust the stack.
constexpr int maximumDepth = 64;

std::optional<json> parseShallow(std::string_view text)
{
    bool isTooDeep = false;
    auto parsed = json::parse(
        text,
        [&isTooDeep](int depth, json::parse_event_t, json&) {
            isTooDeep = isTooDeep || depth > maximumDepth;
            return !isTooDeep;
        },
        /*allow_exceptions=*/false);
    return parsed.is_discarded() || isTooDeep ? std::nullopt : std::optional(std::move(parsed));
}

json numberToJson(double number)
{
    if (std::isnan(number)) {
        return "nan";
    }
    return std::isfinite(number) ? json(number) : json(number > 0 ? "inf" : "-inf");
}

std::optional<double> numberFromJson(const json& stored)
{
    if (stored.is_number()) {
        return stored.get<double>();
    }
    if (stored == "nan") {
        return std::numeric_limits<double>::quiet_NaN();
    }
    constexpr double infinity = std::numeric_limits<double>::infinity();
    return stored == "inf"    ? std::optional(infinity)
           : stored == "-inf" ? std::optional(-infinity)
                              : std::nullopt;
}

struct Encoder {
    json operator()(const UserDefaults::Data& data) const
    {
        // As a nested document only when it reads back as the same bytes.
        if (const auto nested = parseShallow(data.bytes); nested && dumpJson(*nested) == data.bytes)
        {
            return {{"type", "data"}, {"json", *nested}};
        }
        return isValidUtf8(data.bytes)
                   ? json{{"type", "data"}, {"text", data.bytes}}
                   : json{{"type", "data"}, {"base64", encodeBase64(data.bytes)}};
    }
    json operator()(const std::string& text) const
    {
        return isValidUtf8(text) ? json{{"type", "string"}, {"value", text}}
                                 : json{{"type", "string"}, {"base64", encodeBase64(text)}};
    }
    json operator()(bool value) const { return {{"type", "boolean"}, {"value", value}}; }
    json operator()(double value) const
    {
        return {{"type", "number"}, {"value", numberToJson(value)}};
    }
    json operator()(const UserDefaults::NumberMap& numbers) const
    {
        const bool isText = std::all_of(numbers.begin(), numbers.end(), [](const auto& pair) {
            return isValidUtf8(pair.first);
        });
        json members = json::object();
        for (const auto& [key, number] : numbers) {
            members[isText ? key : encodeBase64(key)] = numberToJson(number);
        }
        return {{"type", "numbers"}, {isText ? "value" : "base64", std::move(members)}};
    }
};

std::optional<std::string> base64Member(const json& entry)
{
    const auto text = stringMember(entry, "base64");
    return text ? decodeBase64(*text) : std::nullopt;
}

std::optional<Value> decodeData(const json& entry)
{
    if (const auto nested = entry.find("json"); nested != entry.end()) {
        return UserDefaults::Data{dumpJson(*nested)};
    }
    auto bytes = stringMember(entry, "text");
    if (!bytes) {
        bytes = base64Member(entry);
    }
    return bytes ? std::optional<Value>(UserDefaults::Data{std::move(*bytes)}) : std::nullopt;
}

std::optional<Value> decodeString(const json& entry)
{
    auto text = stringMember(entry, "value");
    if (!text) {
        text = base64Member(entry);
    }
    return text ? std::optional<Value>(std::move(*text)) : std::nullopt;
}

std::optional<Value> decodeNumbers(const json& entry)
{
    const bool isText = entry.contains("value");
    const auto members = entry.find(isText ? "value" : "base64");
    if (members == entry.end() || !members->is_object()) {
        return std::nullopt;
    }
    UserDefaults::NumberMap numbers;
    for (const auto& [key, stored] : members->items()) {
        const auto number = numberFromJson(stored);
        const auto name = isText ? std::optional(key) : decodeBase64(key);
        if (!number || !name) {
            return std::nullopt;
        }
        numbers.emplace(*name, *number);
    }
    return numbers;
}

} // namespace

json SettingsFormat::encode(const Value& value)
{
    return std::visit(Encoder{}, value);
}

std::optional<Value> SettingsFormat::decode(const json& entry)
{
    if (!entry.is_object()) {
        return std::nullopt;
    }
    const auto type = stringMember(entry, "type").value_or("");
    if (type == "data") {
        return decodeData(entry);
    }
    if (type == "string") {
        return decodeString(entry);
    }
    if (type == "numbers") {
        return decodeNumbers(entry);
    }
    if (type == "boolean") {
        const auto value = boolMember(entry, "value");
        return value ? std::optional<Value>(*value) : std::nullopt;
    }
    const auto stored = entry.find("value");
    if (type == "number" && stored != entry.end()) {
        const auto number = numberFromJson(*stored);
        return number ? std::optional<Value>(*number) : std::nullopt;
    }
    return std::nullopt;
}

std::string SettingsFormat::write(const Document& document)
{
    return dumpJson(json(document), 2) + '\n';
}

std::optional<SettingsFormat::Document> SettingsFormat::read(std::string_view text)
{
    const auto parsed = parseShallow(text);
    if (!parsed || !parsed->is_object()) {
        return std::nullopt;
    }
    Document document;
    for (const auto& [key, entry] : parsed->items()) {
        document.emplace(key, entry);
    }
    return document;
}

} // namespace fadewell
