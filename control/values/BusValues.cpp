#include "control/values/BusValues.h"

#include <QDBusArgument>
#include <QDBusMetaType>

#include <optional>

namespace fadewell {
namespace {

QVariant variant(const std::string& text)
{
    return QString::fromStdString(text);
}

void insert(BusMap& map, const char* name, const std::optional<std::string>& text)
{
    if (text) {
        map.insert(name, variant(*text));
    }
}

void read(const BusMap& map, const char* name, std::string& text)
{
    text = map.value(name).toString().toStdString();
}

void read(const BusMap& map, const char* name, std::optional<std::string>& text)
{
    if (map.contains(name)) {
        text = map.value(name).toString().toStdString();
    }
}

void read(const BusMap& map, const char* name, bool& flag)
{
    flag = map.value(name, flag).toBool();
}

void read(const BusMap& map, const char* name, double& number)
{
    number = map.value(name, number).toDouble();
}

void read(const BusMap& map, const char* name, std::vector<std::string>& texts)
{
    texts = fromQStringList(qdbus_cast<QStringList>(map.value(name)));
}

} // namespace

void registerBusTypes()
{
    qDBusRegisterMetaType<BusMapList>();
}

QStringList toQStringList(const std::vector<std::string>& texts)
{
    QStringList list;
    for (const auto& text : texts) {
        list.append(QString::fromStdString(text));
    }
    return list;
}

std::vector<std::string> fromQStringList(const QStringList& texts)
{
    std::vector<std::string> list;
    for (const auto& text : texts) {
        list.push_back(text.toStdString());
    }
    return list;
}

BusMap toBus(const AppEntry& app)
{
    const QList<int> pids(app.pids.begin(), app.pids.end());
    BusMap map{{"id", variant(app.id)},
               {"name", variant(app.name)},
               {"isPlaying", app.isPlaying},
               {"isUsingMicrophone", app.isUsingMicrophone},
               {"volume", app.volume},
               {"isMuted", app.isMuted},
               {"pids", QVariant::fromValue(pids)},
               {"isTappable", app.isTappable}};
    insert(map, "outputDeviceUID", app.outputDeviceUID);
    insert(map, "outputDeviceName", app.outputDeviceName);
    insert(map, "callStatus", app.callStatus);
    insert(map, "bundleID", app.bundleID);
    insert(map, "untappableReason", app.untappableReason);
    return map;
}

void fromBus(const BusMap& map, AppEntry& app)
{
    read(map, "id", app.id);
    read(map, "name", app.name);
    read(map, "isPlaying", app.isPlaying);
    read(map, "isUsingMicrophone", app.isUsingMicrophone);
    read(map, "volume", app.volume);
    read(map, "isMuted", app.isMuted);
    read(map, "outputDeviceUID", app.outputDeviceUID);
    read(map, "outputDeviceName", app.outputDeviceName);
    read(map, "callStatus", app.callStatus);
    read(map, "bundleID", app.bundleID);
    read(map, "isTappable", app.isTappable);
    read(map, "untappableReason", app.untappableReason);
    const auto pids = qdbus_cast<QList<int>>(map.value("pids"));
    app.pids.assign(pids.begin(), pids.end());
}

BusMap toBus(const OutputEntry& output)
{
    return {{"id", variant(output.id)},
            {"name", variant(output.name)},
            {"kind", variant(output.kind)},
            {"isDefault", output.isDefault}};
}

void fromBus(const BusMap& map, OutputEntry& output)
{
    read(map, "id", output.id);
    read(map, "name", output.name);
    read(map, "kind", output.kind);
    read(map, "isDefault", output.isDefault);
}

BusMap toBus(const MicrophoneEntry& microphone)
{
    BusMap map{{"isMuted", microphone.isMuted},
               {"canMute", microphone.canMute},
               {"users", toQStringList(microphone.users)},
               {"uses", QVariant::fromValue(toBusList(microphone.uses))}};
    insert(map, "deviceName", microphone.deviceName);
    if (microphone.volume) {
        map.insert("volume", *microphone.volume);
    }
    return map;
}

void fromBus(const BusMap& map, MicrophoneEntry& microphone)
{
    read(map, "deviceName", microphone.deviceName);
    read(map, "isMuted", microphone.isMuted);
    read(map, "canMute", microphone.canMute);
    read(map, "users", microphone.users);
    microphone.uses = fromBusList<MicrophoneUseEntry>(qdbus_cast<BusMapList>(map.value("uses")));
    if (map.contains("volume")) {
        microphone.volume = map.value("volume").toDouble();
    }
}

BusMap toBus(const MicrophoneUseEntry& use)
{
    return {{"id", variant(use.id)},
            {"name", variant(use.name)},
            {"since", QVariant::fromValue(qlonglong{use.since})}};
}

void fromBus(const BusMap& map, MicrophoneUseEntry& use)
{
    read(map, "id", use.id);
    read(map, "name", use.name);
    use.since = map.value("since").toLongLong();
}

BusMap toBus(const CallModeEntry& callMode)
{
    BusMap map{{"isActive", callMode.isActive},
               {"isDetected", callMode.isDetected},
               {"isAutomatic", callMode.isAutomatic},
               {"level", callMode.level},
               {"excludedApps", toQStringList(callMode.excludedApps)},
               {"names", toQStringList(callMode.names)}};
    if (callMode.override_) {
        map.insert("override", *callMode.override_);
    }
    return map;
}

void fromBus(const BusMap& map, CallModeEntry& callMode)
{
    read(map, "isActive", callMode.isActive);
    read(map, "isDetected", callMode.isDetected);
    read(map, "isAutomatic", callMode.isAutomatic);
    read(map, "level", callMode.level);
    read(map, "excludedApps", callMode.excludedApps);
    read(map, "names", callMode.names);
    if (map.contains("override")) {
        callMode.override_ = map.value("override").toBool();
    }
}

BusMap toBus(const CallAppEntry& app)
{
    return {{"id", variant(app.id)}, {"name", variant(app.name)}, {"isExcluded", app.isExcluded}};
}

void fromBus(const BusMap& map, CallAppEntry& app)
{
    read(map, "id", app.id);
    read(map, "name", app.name);
    read(map, "isExcluded", app.isExcluded);
}

BusMap toBus(const NamedItem& item)
{
    return {{"id", variant(item.id)}, {"name", variant(item.name)}};
}

void fromBus(const BusMap& map, NamedItem& item)
{
    read(map, "id", item.id);
    read(map, "name", item.name);
}

} // namespace fadewell
