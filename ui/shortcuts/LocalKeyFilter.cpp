#include "ui/shortcuts/LocalKeyFilter.h"

#include "shortcuts/Modifiers.h"
#include "ui/style/MenuTracking.h"

#include <QCoreApplication>
#include <QKeyEvent>

#include <utility>

namespace fadewell {
namespace {

// Qt's windows number keys as X and Wayland do: the kernel's codes, counted from 8.
constexpr quint32 firstScanCode = 8;

std::uint32_t flagsOf(Qt::KeyboardModifiers modifiers)
{
    using namespace shortcuts;
    constexpr std::pair<Qt::KeyboardModifier, std::uint32_t> bits[] = {
        {Qt::ShiftModifier, event::shift},
        {Qt::ControlModifier, event::control},
        {Qt::AltModifier, event::option},
        {Qt::MetaModifier, event::command},
        {Qt::KeypadModifier, event::numericPad}};
    std::uint32_t flags = 0;
    for (const auto& [modifier, flag] : bits) {
        flags |= modifiers.testFlag(modifier) ? flag : 0;
    }
    return flags;
}

} // namespace

LocalKeyFilter::LocalKeyFilter(std::shared_ptr<shortcuts::KeyboardShortcuts> shortcuts)
    : shortcuts_(std::move(shortcuts))
{
    QCoreApplication::instance()->installEventFilter(this);
    connect(&MenuTracking::instance(), &MenuTracking::changed, this, [this](bool isTracking) {
        shortcuts_->notifications()->post(isTracking ? shortcuts::notification::menuDidBeginTracking
                                                     : shortcuts::notification::menuDidEndTracking);
    });
}

bool LocalKeyFilter::eventFilter(QObject* watched, QEvent* event)
{
    // Only where a key arrives first, not again at the item that has the focus.
    if (!watched->isWindowType() || !shortcuts_->service()->wantsLocalKeys()) {
        return false;
    }
    if (event->type() == QEvent::ShortcutOverride && shortcuts_->isRecording()) {
        event->accept(); // It comes as a key, not as one of the window's own shortcuts.
        return true;
    }
    const bool isKey = event->type() == QEvent::KeyPress || event->type() == QEvent::KeyRelease;
    return isKey && deliver(*static_cast<QKeyEvent*>(event));
}

bool LocalKeyFilter::deliver(const QKeyEvent& event)
{
    const bool isPressed = event.type() == QEvent::KeyPress;
    if (event.nativeScanCode() < firstScanCode || (!isPressed && event.isAutoRepeat())) {
        return false; // A held key is not released each time that it repeats.
    }
    return shortcuts_->service()->deliverLocalKey(event.nativeScanCode() - firstScanCode,
                                                  isPressed,
                                                  event.isAutoRepeat(),
                                                  flagsOf(event.modifiers()));
}

} // namespace fadewell
