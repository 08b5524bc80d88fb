#pragma once

#include <string_view>

namespace fadewell {

// How this program recognises what it made in the sound system, also after a crash.

inline constexpr std::string_view aggregateName = "Fadewell";
inline constexpr std::string_view aggregateUIDPrefix = "app.fadewell.tap.";
inline constexpr std::string_view tapNamePrefix = "Fadewell ";

[[nodiscard]] constexpr bool isOwnAggregate(std::string_view uid)
{
    return uid.starts_with(aggregateUIDPrefix);
}

[[nodiscard]] constexpr bool isOwnTap(std::string_view name)
{
    return name.starts_with(tapNamePrefix);
}

} // namespace fadewell
