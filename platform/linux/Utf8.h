#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

namespace fadewell {

struct DecodedUtf8 {
    char32_t codePoint = 0;
    std::size_t length = 0; ///< bytes, 1 to 4
};

/// The first character of a text; absent when it is empty or does not begin with valid UTF-8
/// (overlong forms, surrogates and values above U+10FFFF are not).
[[nodiscard]] std::optional<DecodedUtf8> decodeUtf8(std::string_view text);

[[nodiscard]] bool isValidUtf8(std::string_view text);

} // namespace fadewell
