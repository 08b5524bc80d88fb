#pragma once

#include <string_view>
#include <variant>

namespace fadewell {

/// A volume or level as a person types it.
struct LevelArgument {
    double value = 0;        ///< a fraction: 0 to 1, or -1 to 1 when it is relative
    bool isRelative = false; ///< written with a sign: a change

    enum class Error {
        notANumber,
        outOfRange
    };

    /// Reads "40%", "0.4", "+10%" and "-10%"; a comma and a blank before the sign are fine. Without
    /// the percent sign the number is a fraction.
    [[nodiscard]] static std::variant<LevelArgument, Error> parse(std::string_view text);

    bool operator==(const LevelArgument&) const = default;
};

} // namespace fadewell
