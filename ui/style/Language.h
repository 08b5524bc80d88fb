#pragma once

#include <QString>

namespace fadewell {

/// Shows every text in the user's language, as far as there is a translation, and in its direction.
/// Before the first window; a second call does nothing. [main thread, with a QGuiApplication]
void installLanguage();

/// The language that texts are shown in, such as "de".
[[nodiscard]] QString shownLanguage();

} // namespace fadewell
