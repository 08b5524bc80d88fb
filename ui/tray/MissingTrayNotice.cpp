#include "ui/tray/MissingTrayNotice.h"

#include <QCoreApplication>

#include <utility>

namespace fadewell {
namespace {

/// At login the tray may come after us.
constexpr double patience = 20; // seconds

QString text(const char* source)
{
    return QCoreApplication::translate("MissingTrayNotice", source);
}

} // namespace

MissingTrayNotice::MissingTrayNotice(const Tray& tray, Parts parts)
    : tray_(tray)
    , parts_(std::move(parts))
    , notification_(parts_.bus,
                    {.summary = text(QT_TRANSLATE_NOOP("MissingTrayNotice", "Fadewell is running")),
                     .body = text(QT_TRANSLATE_NOOP(
                         "MissingTrayNotice",
                         "This desktop shows no tray icons. “Open Mixer” in Fadewell’s entry "
                         "among your apps opens it, and so does the command “fadewell --show”.")),
                     .action = text(QT_TRANSLATE_NOOP("MissingTrayNotice", "Open Mixer")),
                     .act = parts_.openMixer})
{
    if (!parts_.defaults->get<bool>(toldKey).value_or(false)) {
        connect(&tray_, &Tray::presenceChanged, this, &MissingTrayNotice::follow);
        follow();
    }
}

void MissingTrayNotice::follow()
{
    if (tray_.presence() != Tray::Presence::absent) {
        patience_ = Timer();
        return;
    }
    patience_ = parts_.mainQueue->after(patience, [this] { tell(); });
}

void MissingTrayNotice::tell()
{
    // A tray of the old kind comes without telling.
    if (tray_.presence() != Tray::Presence::absent) {
        return;
    }
    disconnect(&tray_, nullptr, this, nullptr);
    log_.notice("No tray takes the icon; \"fadewell --show\" opens the mixer");
    notification_.show([this](bool isShown) {
        if (isShown) {
            parts_.defaults->set(toldKey, true);
        }
    });
}

} // namespace fadewell
