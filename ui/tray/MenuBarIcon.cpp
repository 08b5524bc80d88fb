#include "ui/tray/MenuBarIcon.h"

#include <QCoreApplication>

namespace fadewell {

MenuBarIcon::MenuBarIcon(const MixerModel& model)
    : symbol("slider.vertical.3")
    , label("Fadewell") // The name, in every language.
{
    if (model.microphone.get().isMuted) {
        symbol = "mic.slash";
        label = QCoreApplication::translate("MenuBarIcon", "Fadewell, Microphone Off");
    } else if (model.isCallModeActive.get()) {
        symbol = "phone";
        label = QCoreApplication::translate("MenuBarIcon", "Fadewell, Call Mode On");
    }
}

} // namespace fadewell
