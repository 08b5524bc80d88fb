#pragma once

#include "control/values/AppEntry.h"
#include "control/values/CallAppEntry.h"
#include "control/values/CallModeEntry.h"
#include "control/values/MicrophoneEntry.h"
#include "control/values/NamedItem.h"
#include "control/values/OutputEntry.h"

#include <QList>
#include <QString>
#include <QStringList>
#include <QVariantMap>

#include <string>
#include <vector>

namespace fadewell {

/// Dictionaries of the bus interface (a{sv}). What is absent has no member; reading takes the
/// default for a member that is missing or mistyped.
using BusMap = QVariantMap;
using BusMapList = QList<QVariantMap>;

/// Makes lists of dictionaries known to the bus library; before the first call on a connection.
void registerBusTypes();

[[nodiscard]] BusMap toBus(const AppEntry& app);
[[nodiscard]] BusMap toBus(const OutputEntry& output);
[[nodiscard]] BusMap toBus(const MicrophoneEntry& microphone);
[[nodiscard]] BusMap toBus(const MicrophoneUseEntry& use);
[[nodiscard]] BusMap toBus(const CallModeEntry& callMode);
[[nodiscard]] BusMap toBus(const CallAppEntry& app);
[[nodiscard]] BusMap toBus(const NamedItem& item);

void fromBus(const BusMap& map, AppEntry& app);
void fromBus(const BusMap& map, OutputEntry& output);
void fromBus(const BusMap& map, MicrophoneEntry& microphone);
void fromBus(const BusMap& map, MicrophoneUseEntry& use);
void fromBus(const BusMap& map, CallModeEntry& callMode);
void fromBus(const BusMap& map, CallAppEntry& app);
void fromBus(const BusMap& map, NamedItem& item);

[[nodiscard]] QStringList toQStringList(const std::vector<std::string>& texts);
[[nodiscard]] std::vector<std::string> fromQStringList(const QStringList& texts);

template <class Entry>
[[nodiscard]] BusMapList toBusList(const std::vector<Entry>& entries)
{
    BusMapList maps;
    for (const auto& entry : entries) {
        maps.append(toBus(entry));
    }
    return maps;
}

template <class Entry>
[[nodiscard]] std::vector<Entry> fromBusList(const BusMapList& maps)
{
    std::vector<Entry> entries(static_cast<std::size_t>(maps.size()));
    for (qsizetype index = 0; index < maps.size(); ++index) {
        fromBus(maps[index], entries[static_cast<std::size_t>(index)]);
    }
    return entries;
}

} // namespace fadewell
