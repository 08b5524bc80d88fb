#pragma once

namespace fadewell::shortcuts {

/// Whether this process runs in the platform's application sandbox; looked up once. [any thread]
[[nodiscard]] bool isSandboxed();

} // namespace fadewell::shortcuts
