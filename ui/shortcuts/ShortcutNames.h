#pragma once

#include "shortcuts/HotKeyService.h"
#include "shortcuts/Shortcut.h"
#include "ui/forms/PlatformTexts.h"

#include <QString>

namespace fadewell {

/// A shortcut in words, such as "Ctrl+Alt+M", with the names that its keys have on this system, in
/// the order of their symbols. [main thread]
[[nodiscard]] QString spokenShortcut(const shortcuts::Shortcut& shortcut,
                                     shortcuts::HotKeyService& service,
                                     PlatformTexts::System system = PlatformTexts::current());

} // namespace fadewell
