#include "shortcuts/HotKey.h"

#include "shortcuts/HotKeyCenter.h"

#include <utility>

namespace fadewell::shortcuts {

HotKey::HotKey(const std::shared_ptr<HotKeyCenter>& center,
               const Shortcut& shortcut,
               Action keyDown,
               Action keyUp)
    : carbonKeyCode(shortcut.carbonKeyCode)
    , carbonModifiers(shortcut.carbonModifiers)
    , onKeyDown(std::move(keyDown))
    , onKeyUp(std::move(keyUp))
    , id(center->nextID())
    , center_(center)
{}

HotKey::~HotKey()
{
    if (const auto center = center_.lock()) {
        center->forget(*this);
    }
}

} // namespace fadewell::shortcuts
