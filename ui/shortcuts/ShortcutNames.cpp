#include "ui/shortcuts/ShortcutNames.h"

#include "shortcuts/Messages.h"
#include "shortcuts/Modifiers.h"
#include "shortcuts/SpecialKey.h"

#include <QCoreApplication>
#include <QStringList>

#include <array>

namespace fadewell {
namespace {

using namespace shortcuts;

struct ModifierName {
    std::uint32_t bit;
    const char* mac;
    const char* freeDesktop;
};

constexpr std::array<ModifierName, 5> modifierNames{{{classic::control,
                                                      QT_TRANSLATE_NOOP("ShortcutNames", "Control"),
                                                      QT_TRANSLATE_NOOP("ShortcutNames", "Ctrl")},
                                                     {classic::option,
                                                      QT_TRANSLATE_NOOP("ShortcutNames", "Option"),
                                                      QT_TRANSLATE_NOOP("ShortcutNames", "Alt")},
                                                     {classic::shift,
                                                      QT_TRANSLATE_NOOP("ShortcutNames", "Shift"),
                                                      QT_TRANSLATE_NOOP("ShortcutNames", "Shift")},
                                                     {classic::command,
                                                      QT_TRANSLATE_NOOP("ShortcutNames", "Command"),
                                                      QT_TRANSLATE_NOOP("ShortcutNames", "Super")},
                                                     {classic::function,
                                                      QT_TRANSLATE_NOOP("ShortcutNames", "Fn"),
                                                      QT_TRANSLATE_NOOP("ShortcutNames", "Fn")}}};

// Keys whose symbol says nothing when it is read aloud; in the order of SpecialKey.
constexpr std::array<const char*, 15> namedKeys{QT_TRANSLATE_NOOP("ShortcutNames", "Return"),
                                                QT_TRANSLATE_NOOP("ShortcutNames", "Backspace"),
                                                QT_TRANSLATE_NOOP("ShortcutNames", "Delete"),
                                                QT_TRANSLATE_NOOP("ShortcutNames", "End"),
                                                QT_TRANSLATE_NOOP("ShortcutNames", "Escape"),
                                                QT_TRANSLATE_NOOP("ShortcutNames", "Help"),
                                                QT_TRANSLATE_NOOP("ShortcutNames", "Home"),
                                                QT_TRANSLATE_NOOP("ShortcutNames", "Space"),
                                                QT_TRANSLATE_NOOP("ShortcutNames", "Tab"),
                                                QT_TRANSLATE_NOOP("ShortcutNames", "Page Up"),
                                                QT_TRANSLATE_NOOP("ShortcutNames", "Page Down"),
                                                QT_TRANSLATE_NOOP("ShortcutNames", "Up Arrow"),
                                                QT_TRANSLATE_NOOP("ShortcutNames", "Right Arrow"),
                                                QT_TRANSLATE_NOOP("ShortcutNames", "Down Arrow"),
                                                QT_TRANSLATE_NOOP("ShortcutNames", "Left Arrow")};

QString text(const char* source)
{
    return QCoreApplication::translate("ShortcutNames", source);
}

QString keypadKey(SpecialKey key)
{
    if (key == SpecialKey::keypadEnter) {
        return text(QT_TRANSLATE_NOOP("ShortcutNames", "Enter"));
    }
    if (key == SpecialKey::keypadClear) {
        return text(QT_TRANSLATE_NOOP("ShortcutNames", "Clear"));
    }
    auto symbol = QString::fromStdString(shortcuts::symbol(key, Messages::current()));
    symbol.chop(1); // the cap around it
    return symbol;
}

QString keyName(const Shortcut& shortcut, HotKeyService& service)
{
    const auto special = specialKey(shortcut.carbonKeyCode);
    if (!special) {
        const auto code = static_cast<std::uint32_t>(shortcut.carbonKeyCode);
        return QString::fromStdString(service.character(code)).toUpper();
    }
    const auto number = static_cast<std::size_t>(*special);
    if (number < namedKeys.size()) {
        return text(namedKeys[number]);
    }
    if (*special >= SpecialKey::keypad0) {
        return text(QT_TRANSLATE_NOOP("ShortcutNames", "Keypad %1")).arg(keypadKey(*special));
    }
    return QString::fromStdString(symbol(*special, Messages::current()));
}

} // namespace

QString
spokenShortcut(const Shortcut& shortcut, HotKeyService& service, PlatformTexts::System system)
{
    QStringList names;
    for (const auto& name : modifierNames) {
        if ((shortcut.carbonModifiers & name.bit) != 0) {
            names << text(system == PlatformTexts::System::mac ? name.mac : name.freeDesktop);
        }
    }
    names << keyName(shortcut, service);
    return names.join('+');
}

} // namespace fadewell
