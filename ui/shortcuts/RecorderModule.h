#pragma once

namespace fadewell {

/// Makes the shortcut field known to every QML engine. [main thread]
void installRecorder();

} // namespace fadewell
