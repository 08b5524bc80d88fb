#pragma once

#include "platform/linux/ProcessIdentity.h"

#include <string>
#include <string_view>

namespace fadewell {

/// Text of another program as a name: valid UTF-8 without control characters, no blanks around it,
/// at most 200 bytes.
[[nodiscard]] std::string tidied(std::string_view text);

/// Every hint tidied.
[[nodiscard]] ClientHints tidied(const ClientHints& hints);

/// What a client calls itself, for people to read; empty when that says which library plays and not
/// which application. "PipeWire ALSA [player]" is "player".
[[nodiscard]] std::string clientName(const ClientHints& tidiedHints);

} // namespace fadewell
