#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace fadewell {

/// The language tags under which a desktop entry's texts are looked for, best first, from a locale
/// such as "de_AT.UTF-8@euro": lang_COUNTRY@MODIFIER, lang_COUNTRY, lang@MODIFIER, lang. Empty for
/// "C", "POSIX" and nothing.
[[nodiscard]] std::vector<std::string> languageTags(std::string_view locale);

/// The locale of messages in this process's environment: LC_ALL, else LC_MESSAGES, else LANG.
[[nodiscard]] std::string messagesLocale();

} // namespace fadewell
