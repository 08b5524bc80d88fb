#pragma once

#include "control/BusMethod.h"

#include <optional>
#include <string>

namespace fadewell {

/// A text argument of at most 1024 bytes; absent when it is longer.
[[nodiscard]] std::optional<std::string> boundedText(const QVariant& argument);
[[nodiscard]] BusError textTooLong();

/// Finite and within the range.
[[nodiscard]] bool isWithin(double number, double least, double most);
[[nodiscard]] BusError outOfRange(double least, double most);

} // namespace fadewell
