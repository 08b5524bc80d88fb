#pragma once

#include "platform/linux/hotkeys/DescriptorWatch.h"

namespace fadewell {

/// Watches descriptors with Qt's event loop. [main thread, with a QCoreApplication]
[[nodiscard]] DescriptorWatch qtDescriptorWatch();

} // namespace fadewell
