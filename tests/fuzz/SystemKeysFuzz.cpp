// The shortcuts of desktops, as their files have them.

#include "platform/linux/systemkeys/GtkAccelerator.h"
#include "platform/linux/systemkeys/KdeShortcuts.h"
#include "platform/linux/systemkeys/QtKeySequence.h"
#include "platform/linux/systemkeys/XfceShortcuts.h"
#include "tests/fuzz/Fuzz.h"

#include <algorithm>

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace fadewell;
    const std::string text(fuzz::textOf(data, size));
    const auto isSomething = [](const KeyBinding& binding) {
        return binding.symbol != 0 || binding.evdev;
    };
    for (const auto& line : fuzz::linesOf(text)) {
        const auto gtk = parseGtkAccelerator(line);
        const auto qt = parseQtKeySequence(line);
        fuzz::require(!gtk || isSomething(*gtk), "a combination of GTK has a key");
        fuzz::require(!qt || isSomething(*qt), "a combination of Qt has a key");
    }
    const auto kde = KdeShortcuts::parse({text, text});
    const auto xfce = XfceShortcuts::parse({text, text});
    fuzz::require(kde.size() + xfce.size() <= 2 * size, "nothing comes from nowhere");
    fuzz::require(std::all_of(kde.begin(), kde.end(), isSomething), "KDE's have keys");
    fuzz::require(std::all_of(xfce.begin(), xfce.end(), isSomething), "Xfce's have keys");
    return 0;
}
