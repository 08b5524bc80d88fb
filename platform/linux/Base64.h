#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace fadewell {

/// Bytes as padded base64.
[[nodiscard]] std::string encodeBase64(std::string_view bytes);

/// Absent for anything but padded base64.
[[nodiscard]] std::optional<std::string> decodeBase64(std::string_view text);

} // namespace fadewell
