#include "ui/PanelRows.h"

#include "base/LocalizedText.h"
#include "ui/AppIconProvider.h"
#include "ui/OutputChoice.h"

#include <algorithm>
#include <cmath>

namespace fadewell {
namespace {

/// The waves fill with the level: none at 0, all from two thirds on.
int litWaves(double volume)
{
    return static_cast<int>(std::ceil(std::min(volume, 1.0) * 3));
}

QString text(std::string_view utf8)
{
    return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

} // namespace

AppRowView PanelRows::row(const AppRowState& app,
                          std::span<const OutputDevice> devices,
                          const std::optional<std::string>& defaultOutputUID)
{
    AppRowView row;
    row.id = text(app.id);
    row.name = text(app.name);
    row.icon = AppIconProvider::address(app.icon);
    row.volume = app.settings.volume();
    row.percent = text(localizedPercent(row.volume));
    row.isMuted = app.settings.isMuted;
    row.waves = litWaves(row.volume);
    row.badge = badge(app.callStatus);
    row.isRouted = app.settings.outputDeviceUID.has_value();
    showOutput(row, deviceInUse(devices, app.settings, app.ownOutputDeviceID, defaultOutputUID));
    return row;
}

AppRowView PanelRows::row(const UntappableApp& untappable,
                          std::span<const OutputDevice> devices,
                          const std::optional<std::string>& defaultOutputUID)
{
    const auto& playsTo = untappable.app.outputDeviceIDs;
    AppRowView row;
    row.id = text(untappable.app.id);
    row.name = text(untappable.identity.name);
    row.icon = AppIconProvider::address(untappable.identity.icon);
    row.obstacle = obstacle(untappable.reason);
    showOutput(row,
               deviceInUse(devices,
                           AppAudioSettings::default_(),
                           playsTo.empty() ? std::nullopt : std::optional(playsTo.front()),
                           defaultOutputUID));
    return row;
}

void PanelRows::showOutput(AppRowView& row, const OutputDevice* device)
{
    row.outputSymbol =
        device == nullptr ? QStringLiteral("speaker.wave.2") : text(symbolName(device->kind));
    row.outputName = device == nullptr ? QString() : text(device->name);
}

QString PanelRows::badge(std::optional<CallStatus> status)
{
    if (!status) {
        return {};
    }
    return *status == CallStatus::inCall ? tr("In Call") : tr("Lowered");
}

QString PanelRows::obstacle(UntappableReason reason)
{
    switch (reason) {
    case UntappableReason::unmanaged:
        return tr("Connects itself and can’t be controlled.");
    case UntappableReason::passthrough:
        return tr("Sends encoded sound and can’t be controlled.");
    case UntappableReason::exclusive:
        return tr("Holds its device for itself and can’t be controlled.");
    case UntappableReason::pinned:
        return tr("Asks not to be moved and can’t be controlled.");
    case UntappableReason::contested:
        return tr("Another program keeps it elsewhere, so it can’t be controlled.");
    }
    return tr("Can’t be controlled.");
}

} // namespace fadewell
