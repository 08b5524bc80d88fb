#include "shortcuts/Recorder.h"

#include "shortcuts/Modifiers.h"
#include "shortcuts/ShortcutText.h"
#include "shortcuts/SpecialKey.h"

#include <utility>
#include <variant>

namespace fadewell::shortcuts {
namespace {

// Command, option, control and what the hardware adds; shift, caps lock, keypad and fn don't make
// a combination.
constexpr std::uint32_t combiningFlags = 0xFF5C0000;

constexpr bool isModifierKey(std::uint16_t keyCode)
{
    return keyCode >= 0x36 && keyCode <= 0x3F; // right command to fn
}

std::optional<Shortcut> shortcutOf(const KeyEvent& event)
{
    if (!event.keyCode || isModifierKey(*event.keyCode)) {
        return std::nullopt;
    }
    return Shortcut{*event.keyCode, classicModifiers(event.modifierFlags)};
}

} // namespace

std::shared_ptr<Recorder> Recorder::create(std::shared_ptr<KeyboardShortcuts> shortcuts,
                                           RecorderHost& host,
                                           Options options,
                                           Messages messages)
{
    const std::shared_ptr<Recorder> made(
        new Recorder(std::move(shortcuts), host, std::move(options), messages));
    made->observeName();
    made->show();
    return made;
}

Recorder::Recorder(std::shared_ptr<KeyboardShortcuts> shortcuts,
                   RecorderHost& host,
                   Options options,
                   Messages messages)
    : shortcuts_(std::move(shortcuts))
    , host_(host)
    , options_(std::move(options))
    , messages_(messages)
    , eventMonitor_(
          shortcuts_->service(), LocalEventMonitor::keyDownMask, [this](const auto& event) {
              // An action of the check may let go of the field.
              const auto self = shared_from_this();
              return handleKey(event);
          })
{}

Recorder::~Recorder()
{
    endRecording();
}

void Recorder::observeName()
{
    const auto weak = weak_from_this();
    layoutObserver_ = shortcuts_->service()->onLayoutChanged([weak] {
        if (const auto self = weak.lock()) {
            self->show();
        }
    });
    if (options_.storageMode == StorageMode::binding) {
        return;
    }
    shortcutsNameChangeObserver_ = shortcuts_->notifications()->observe(
        notification::shortcutByNameDidChange, [weak](const auto& info) {
            const auto self = weak.lock();
            const auto changed = info.find(notification::nameKey);
            if (self && changed != info.end() &&
                std::get<Name>(changed->second) == self->options_.shortcutName) {
                self->show();
            }
        });
}

void Recorder::setShortcutName(const Name& name)
{
    if (options_.shortcutName != name) {
        options_.shortcutName = name;
        show();
    }
}

std::optional<Shortcut> Recorder::shortcut() const
{
    return options_.storageMode == StorageMode::binding
               ? options_.bindingShortcut
               : shortcuts_->shortcut(options_.shortcutName);
}

void Recorder::show()
{
    const auto current = shortcut();
    text.set(current ? description(*current, *shortcuts_->service(), messages_) : "");
    showsCancelButton.set(current.has_value());
}

bool Recorder::becomeFirstResponder()
{
    if (!canBecomeKey) {
        return false;
    }
    if (!isRecording.get()) {
        showsCancelButton.set(shortcut().has_value());
        eventMonitor_.start();
        shortcuts_->beginRecording(*this);
        isRecording.set(true);
    }
    return true;
}

void Recorder::endRecording()
{
    if (isRecording.get()) {
        eventMonitor_.stop();
        shortcuts_->endRecording(*this);
        isRecording.set(false);
    }
}

void Recorder::stop()
{
    endRecording();
    host_.clearFirstResponder();
}

void Recorder::clear()
{
    store(std::nullopt);
}

void Recorder::store(const std::optional<Shortcut>& shortcut)
{
    if (options_.storageMode == StorageMode::binding) {
        options_.bindingShortcut = shortcut;
    } else {
        shortcuts_->storeShortcut(shortcut, options_.shortcutName);
    }
    show();
    if (options_.onChange) {
        options_.onChange(shortcut);
    }
}

bool Recorder::handleKey(const KeyEvent& event)
{
    if (isPresenting_) {
        return false; // The alert's own keys.
    }
    if (event.keyCode == keyCode(SpecialKey::escape)) {
        stop();
        return true;
    }
    const bool isCombination = (event.modifierFlags & combiningFlags) != 0;
    if (!isCombination && (event.functionKey < 1 || event.functionKey > 35)) {
        return false;
    }
    const auto pressed = shortcutOf(event);
    if (!pressed) {
        return false;
    }
    if (!event.isARepeat) {
        checkMenuItems({*pressed, event.modifierFlags});
    }
    return true;
}

void Recorder::accept(const Shortcut& accepted)
{
    const auto self = shared_from_this();
    store(accepted);
    stop();
}

} // namespace fadewell::shortcuts
