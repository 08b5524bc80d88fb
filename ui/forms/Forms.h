#pragma once

class QQmlEngine;

namespace fadewell {

/// Makes the sections and rows of forms known to an engine, and the style with them. [main thread]
void installForms(QQmlEngine& engine);

} // namespace fadewell
