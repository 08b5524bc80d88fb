#pragma once

class QQmlEngine;

namespace fadewell {

/// Makes the controls, the theme and the symbols known to an engine. [main thread]
void installStyle(QQmlEngine& engine);

} // namespace fadewell
