#include "shortcuts/Shortcut.h"

#include "base/LenientJson.h"

#include <cmath>
#include <limits>

namespace fadewell::shortcuts {
namespace {

constexpr const char* keyCodeKey = "carbonKeyCode";
constexpr const char* modifiersKey = "carbonModifiers";

std::optional<std::int64_t> integerMember(const nlohmann::json& object, const char* name)
{
    constexpr double limit = 9223372036854775808.0; // 2^63
    const auto found = object.find(name);
    if (found == object.end() || !found->is_number()) {
        return std::nullopt;
    }
    if (found->is_number_unsigned()) {
        const auto value = found->get<std::uint64_t>();
        const auto largest = std::numeric_limits<std::int64_t>::max();
        return value > static_cast<std::uint64_t>(largest)
                   ? std::nullopt
                   : std::optional(static_cast<std::int64_t>(value));
    }
    if (found->is_number_integer()) {
        return found->get<std::int64_t>();
    }
    const auto value = found->get<double>(); // 46.0 is an integer too.
    return std::trunc(value) == value && value >= -limit && value < limit
               ? std::optional(static_cast<std::int64_t>(value))
               : std::nullopt;
}

} // namespace

std::string Shortcut::encoded() const
{
    return dumpJson({{keyCodeKey, carbonKeyCode}, {modifiersKey, carbonModifiers}});
}

std::optional<Shortcut> Shortcut::decoded(std::string_view json)
{
    const auto object = parseJson(json);
    if (!object || !object->is_object()) {
        return std::nullopt;
    }
    const auto keyCode = integerMember(*object, keyCodeKey);
    const auto modifiers = integerMember(*object, modifiersKey);
    if (!keyCode || !modifiers) {
        return std::nullopt;
    }
    return Shortcut{*keyCode, *modifiers};
}

} // namespace fadewell::shortcuts
