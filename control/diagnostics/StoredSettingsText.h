#pragma once

#include "app/SystemInspection.h"
#include "control/diagnostics/NameMask.h"

#include <string>

namespace fadewell {

/// Notes the apps that stored settings are about.
void noteApps(NameMask& mask, const SystemInspection::StoredSettings& settings);

/// The settings as they are stored, or why they can't be shown; each line ended by a line feed.
[[nodiscard]] std::string storedSettingsText(const NameMask& mask,
                                             const SystemInspection::StoredSettings& settings);

} // namespace fadewell
