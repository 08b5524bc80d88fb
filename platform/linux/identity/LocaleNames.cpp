#include "platform/linux/identity/LocaleNames.h"

#include <cstdlib>

namespace fadewell {

std::vector<std::string> languageTags(std::string_view locale)
{
    const auto cut = [&locale](char mark) {
        const std::size_t at = locale.find(mark);
        const auto tail = at == std::string_view::npos ? std::string_view{} : locale.substr(at);
        locale = locale.substr(0, at);
        return std::string(tail);
    };
    const std::string modifier = cut('@');
    cut('.'); // The encoding decides nothing.
    const std::string country = cut('_');
    const std::string language(locale);
    if (language.empty() || language == "C" || language == "POSIX") {
        return {};
    }
    std::vector<std::string> tags;
    if (!country.empty() && !modifier.empty()) {
        tags.push_back(language + country + modifier);
    }
    if (!country.empty()) {
        tags.push_back(language + country);
    }
    if (!modifier.empty()) {
        tags.push_back(language + modifier);
    }
    tags.push_back(language);
    return tags;
}

std::string messagesLocale()
{
    for (const char* name : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
        if (const char* value = std::getenv(name); value != nullptr && *value != '\0') {
            return value;
        }
    }
    return {};
}

} // namespace fadewell
