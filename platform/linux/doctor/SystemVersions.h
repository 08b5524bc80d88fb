#pragma once

#include "app/SystemInspection.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace fadewell {

// What runs on this machine besides Fadewell, as far as files and the kernel tell. [any thread]

/// Kernel and distribution; inside a sandbox the machine's, where the sandbox shows it.
[[nodiscard]] SystemInspection::Versions machineVersions();

/// Whose machine this is.
[[nodiscard]] SystemInspection::Owner machineOwner();

/// The version in the file name of a library that a process has loaded, such as "0.4.13"; empty
/// when it has none of that name or may not be looked into.
[[nodiscard]] std::string loadedLibraryVersion(std::int32_t pid, std::string_view library);

/// The value of a line `key=value` or `key="value"`; empty when there is none.
[[nodiscard]] std::string releaseValue(std::string_view release, std::string_view key);

} // namespace fadewell
