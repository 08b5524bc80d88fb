#include "shortcuts/Messages.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>

namespace fadewell::shortcuts {
namespace {

constexpr std::array<std::string_view, 4> languages{"en", "de", "ar", "he"};

struct Entry {
    std::string_view key;
    std::array<std::string_view, languages.size()> texts;
};

constexpr std::array<Entry, 7> entries{{
    {"keyboard_shortcut_used_by_menu_item",
     {"This keyboard shortcut cannot be used as it’s already used by the menu item “%@”.",
      "Dieses Tastenkürzel kann nicht verwendet werden, weil es zum Menüpunkt „%@“ gehört.",
      "لا يمكن استخدام هذا الاختصار لأنه مستخدَم في عنصر القائمة «%@».",
      "אי אפשר להשתמש בקיצור הזה כי הוא כבר שייך לפריט התפריט „%@”."}},
    {"keyboard_shortcut_used_by_system",
     {"This keyboard shortcut cannot be used as it’s already used by the system or another app.",
      "Dieses Tastenkürzel kann nicht verwendet werden, weil das System oder eine andere App es "
      "verwendet.",
      "لا يمكن استخدام هذا الاختصار لأن النظام أو تطبيقًا آخر يستخدمه.",
      "אי אפשר להשתמש בקיצור הזה כי המערכת או יישום אחר כבר משתמשים בו."}},
    {"keyboard_shortcuts_can_be_changed",
     {"Most keyboard shortcuts of the system can be changed in its keyboard settings.",
      "Die meisten Tastenkürzel des Systems lassen sich in dessen Tastatureinstellungen ändern.",
      "يمكن تغيير معظم اختصارات النظام في إعدادات لوحة المفاتيح.",
      "את רוב קיצורי המערכת אפשר לשנות בהגדרות המקלדת."}},
    {"keyboard_shortcut_disallowed",
     {"Option alone, or with Shift, cannot be used for keyboard shortcuts here. Add another "
      "modifier key.",
      "Die Wahltaste allein oder mit Umschalt kann hier nicht für Tastenkürzel verwendet werden. "
      "Nimm eine weitere Sondertaste dazu.",
      "لا يمكن استخدام مفتاح الخيار وحده أو مع Shift هنا. أضف مفتاح تعديل آخر.",
      "אי אפשר להשתמש כאן במקש האפשרויות לבדו או עם Shift. יש להוסיף מקש צירוף נוסף."}},
    {"force_use_shortcut",
     {"Use Anyway", "Trotzdem verwenden", "استخدام على أي حال", "להשתמש בכל זאת"}},
    {"ok", {"OK", "OK", "حسنًا", "אישור"}},
    {"space_key", {"space", "Leertaste", "مسافة", "רווח"}},
}};

} // namespace

Messages::Messages(std::string_view language)
{
    const auto code = language.substr(0, language.find_first_of("_-.@"));
    const auto found = std::find(languages.begin(), languages.end(), code);
    language_ = found == languages.end() ? 0 : static_cast<std::size_t>(found - languages.begin());
}

Messages Messages::current()
{
    for (const char* variable : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
        const char* value = std::getenv(variable); // NOLINT(concurrency-mt-unsafe): nobody sets it
        if (value != nullptr && *value != '\0') {
            return Messages(value);
        }
    }
    return Messages(languages.front());
}

std::string Messages::text(std::string_view key) const
{
    const auto found = std::find_if(
        entries.begin(), entries.end(), [key](const Entry& entry) { return entry.key == key; });
    if (found == entries.end()) {
        std::fprintf(stderr, "no message \"%.*s\"\n", static_cast<int>(key.size()), key.data());
        std::abort();
    }
    return std::string(found->texts[language_]);
}

std::string Messages::text(std::string_view key, std::string_view argument) const
{
    auto result = text(key);
    if (const auto at = result.find("%@"); at != std::string::npos) {
        result.replace(at, 2, argument);
    }
    return result;
}

} // namespace fadewell::shortcuts
