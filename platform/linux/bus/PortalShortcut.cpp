#include "platform/linux/bus/PortalShortcut.h"

#include "platform/linux/hotkeys/KeyCodeMap.h"
#include "platform/linux/hotkeys/TypedCharacters.h"
#include "shortcuts/Modifiers.h"
#include "shortcuts/SpecialKey.h"

#include <QDBusMetaType>

#include <limits>

namespace fadewell {

namespace classic = shortcuts::classic;

QDBusArgument& operator<<(QDBusArgument& argument, const PortalShortcut& shortcut)
{
    argument.beginStructure();
    argument << shortcut.id << shortcut.properties;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, PortalShortcut& shortcut)
{
    argument.beginStructure();
    argument >> shortcut.id >> shortcut.properties;
    argument.endStructure();
    return argument;
}

void registerPortalTypes()
{
    qDBusRegisterMetaType<PortalShortcut>();
    qDBusRegisterMetaType<PortalShortcuts>();
}

PortalShortcut toPortal(const shortcuts::NamedBinding& binding)
{
    PortalShortcut shortcut{QString::fromStdString(binding.id),
                            {{"description", QString::fromStdString(binding.description)}}};
    const auto trigger = binding.preferred ? portalTrigger(*binding.preferred) : "";
    if (!trigger.empty()) {
        shortcut.properties.insert("preferred_trigger", QString::fromStdString(trigger));
    }
    return shortcut;
}

std::map<std::string, std::string> triggersOf(const QVariant& list)
{
    std::map<std::string, std::string> triggers;
    if (list.metaType() != QMetaType::fromType<QDBusArgument>()) {
        return triggers;
    }
    const auto argument = list.value<QDBusArgument>();
    if (argument.currentSignature() != "a(sa{sv})") {
        return triggers;
    }
    for (const auto& shortcut : qdbus_cast<PortalShortcuts>(argument)) {
        const auto text = shortcut.properties.value("trigger_description").toString();
        if (!text.isEmpty()) {
            triggers.emplace(shortcut.id.toStdString(), text.toStdString());
        }
    }
    return triggers;
}

std::string portalTrigger(const shortcuts::Shortcut& shortcut)
{
    const auto code = shortcut.carbonKeyCode;
    const bool isCode = code >= 0 && code <= std::numeric_limits<std::uint16_t>::max();
    const auto evdev = isCode ? evdevCode(static_cast<std::uint32_t>(code)) : std::nullopt;
    const auto key =
        evdev ? TypedCharacters::symbolName(static_cast<std::uint32_t>(*evdev + xKeycodeOffset))
              : std::string();
    const auto modifiers = shortcuts::withoutImpliedFunction(
        code, shortcuts::normalizedModifiers(shortcut.carbonModifiers));
    if (key.empty() || (modifiers & classic::function) != 0) {
        return {};
    }
    std::string trigger;
    for (const auto& [bit, word] : {std::pair{classic::control, "CTRL+"},
                                    std::pair{classic::option, "ALT+"},
                                    std::pair{classic::shift, "SHIFT+"},
                                    std::pair{classic::command, "LOGO+"}})
    {
        trigger += (modifiers & bit) != 0 ? word : "";
    }
    return trigger + key;
}

} // namespace fadewell
