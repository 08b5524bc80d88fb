#pragma once

namespace fadewell {

/// Whether this screen can show transparent corners. [main thread, with a QGuiApplication]
[[nodiscard]] bool isComposited();

} // namespace fadewell
