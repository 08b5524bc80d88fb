#pragma once

#include "base/Finding.h"

#include <QDBusConnection>
#include <QVariant>

#include <optional>
#include <vector>

namespace fadewell {

/// What the desktop offers on the session bus, and what doesn't work without it. Waits some seconds
/// where a part of the desktop hangs.
[[nodiscard]] std::vector<Finding> sessionFindings(const QDBusConnection& bus);

/// A property of another program; absent when it doesn't run or doesn't answer in time.
[[nodiscard]] std::optional<QVariant> readBusProperty(const QDBusConnection& bus,
                                                      const char* service,
                                                      const char* path,
                                                      const char* interface,
                                                      const char* name);

} // namespace fadewell
