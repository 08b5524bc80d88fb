#include "shortcuts/Modifiers.h"
#include "shortcuts/Recorder.h"
#include "shortcuts/ShortcutText.h"
#include "shortcuts/SpecialKey.h"

#include <algorithm>
#include <utility>

namespace fadewell::shortcuts {
namespace {

// Option alone, or with shift, types characters: from version 15 on a sandboxed program doesn't get
// such a combination.
constexpr int versionWithoutOptionShortcuts = 15;
constexpr std::uint32_t judgedFlags =
    event::command | event::option | event::control | event::capsLock | event::function;

bool isUpperCaseLetter(const std::string& text)
{
    return text.size() == 1 && text.front() >= 'A' && text.front() <= 'Z';
}

struct Pressed {
    std::string key;
    std::uint32_t modifiers; ///< classic
};

bool isProducedBy(const Pressed& pressed, const MenuItem& item)
{
    auto key = item.keyEquivalent;
    auto modifiers = classicModifiers(item.modifierFlags);
    if (isUpperCaseLetter(key)) {
        key.front() = static_cast<char>(key.front() - 'A' + 'a');
        modifiers |= classic::shift;
    }
    return !key.empty() && key == pressed.key && modifiers == pressed.modifiers;
}

const MenuItem* find(const std::vector<MenuItem>& menu, const Pressed& pressed)
{
    for (const auto& item : menu) {
        if (isProducedBy(pressed, item)) {
            return &item;
        }
        if (const auto* inner = find(item.submenu, pressed)) {
            return inner;
        }
    }
    return nullptr;
}

std::uint32_t comparable(const Shortcut& shortcut)
{
    return withoutImpliedFunction(shortcut.carbonKeyCode,
                                  normalizedModifiers(shortcut.carbonModifiers));
}

bool isSystemShortcut(const Shortcut& shortcut, HotKeyService& service)
{
    const auto system = service.systemHotKeys();
    return std::any_of(system.begin(),
                       system.end(),
                       [&](const Shortcut& each) {
                           return each.carbonKeyCode == shortcut.carbonKeyCode &&
                                  comparable(each) == comparable(shortcut);
                       }) ||
           service.isHeldElsewhere(shortcut);
}

} // namespace

void Recorder::checkMenuItems(const Attempt& attempt)
{
    const auto goOn = [this, attempt] {
        checkPlatform(attempt);
    };
    if (attempt.shortcut == shortcut()) {
        goOn();
        return;
    }
    const auto menu = host_.mainMenu();
    const Pressed pressed{menuKeyEquivalent(attempt.shortcut, *shortcuts_->service()),
                          comparable(attempt.shortcut)};
    if (const auto* item = find(menu, pressed)) {
        presentConflict(options_.conflictPolicy.menuItem,
                        messages_.text("keyboard_shortcut_used_by_menu_item", item->title),
                        {},
                        goOn);
        return;
    }
    goOn();
}

void Recorder::checkPlatform(const Attempt& attempt)
{
    const bool isOptionOnly = (attempt.modifierFlags & judgedFlags) == event::option;
    if (options_.system.majorVersion == versionWithoutOptionShortcuts &&
        options_.system.isSandboxed && isOptionOnly &&
        options_.conflictPolicy.disallowed != ConflictBehavior::allow)
    {
        presentAlert({messages_.text("keyboard_shortcut_disallowed"), {}, {messages_.text("ok")}},
                     {});
        return;
    }
    checkSystem(attempt);
}

void Recorder::checkSystem(const Attempt& attempt)
{
    if (isSystemShortcut(attempt.shortcut, *shortcuts_->service())) {
        presentConflict(options_.conflictPolicy.systemShortcut,
                        messages_.text("keyboard_shortcut_used_by_system"),
                        messages_.text("keyboard_shortcuts_can_be_changed"),
                        [this, attempt] { checkCaller(attempt); });
        return;
    }
    checkCaller(attempt);
}

void Recorder::checkCaller(const Attempt& attempt)
{
    if (options_.validateShortcut) {
        if (auto reason = options_.validateShortcut(attempt.shortcut).disallowedReason) {
            presentAlert({std::move(*reason), {}, {messages_.text("ok")}}, {});
            return;
        }
    }
    accept(attempt.shortcut);
}

void Recorder::presentConflict(ConflictBehavior behavior,
                               std::string message,
                               std::string informativeText,
                               Next accepted)
{
    if (behavior == ConflictBehavior::allow) {
        accepted();
        return;
    }
    Alert alert{std::move(message), std::move(informativeText), {messages_.text("ok")}};
    if (behavior == ConflictBehavior::warn) {
        alert.buttons.push_back(messages_.text("force_use_shortcut"));
    }
    const bool mayForce = behavior == ConflictBehavior::warn;
    presentAlert(alert, [mayForce, accepted = std::move(accepted)](int answer) {
        if (mayForce && answer == alertSecondButton) {
            accepted();
        }
    });
}

void Recorder::presentAlert(const Alert& alert, std::function<void(int)> answered)
{
    isPresenting_ = true;
    host_.present(alert, [weak = weak_from_this(), answered = std::move(answered)](int answer) {
        if (const auto self = weak.lock()) {
            self->isPresenting_ = false;
            if (answered) {
                answered(answer);
            }
        }
    });
}

} // namespace fadewell::shortcuts
