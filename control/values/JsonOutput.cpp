#include "control/values/JsonOutput.h"

#include <optional>

namespace fadewell {
namespace {

template <class Value>
OrderedJson orNull(const std::optional<Value>& value)
{
    return value ? OrderedJson(*value) : OrderedJson(nullptr);
}

} // namespace

OrderedJson toJson(const AppEntry& app)
{
    OrderedJson json{{"id", app.id},
                     {"name", app.name},
                     {"isPlaying", app.isPlaying},
                     {"isUsingMicrophone", app.isUsingMicrophone},
                     {"volume", app.volume},
                     {"isMuted", app.isMuted},
                     {"outputDeviceUID", orNull(app.outputDeviceUID)},
                     {"outputDeviceName", orNull(app.outputDeviceName)},
                     {"callStatus", orNull(app.callStatus)},
                     {"bundleID", orNull(app.bundleID)},
                     {"pids", app.pids},
                     {"isTappable", app.isTappable}};
    if (app.untappableReason) {
        json["untappableReason"] = *app.untappableReason;
    }
    return json;
}

OrderedJson toJson(const OutputEntry& output)
{
    return {{"id", output.id},
            {"name", output.name},
            {"kind", output.kind},
            {"isDefault", output.isDefault}};
}

OrderedJson toJson(const MicrophoneUseEntry& use)
{
    return {{"id", use.id}, {"name", use.name}, {"since", use.since}};
}

OrderedJson toJson(const MicrophoneEntry& microphone)
{
    return {{"deviceName", orNull(microphone.deviceName)},
            {"volume", orNull(microphone.volume)},
            {"isMuted", microphone.isMuted},
            {"canMute", microphone.canMute},
            {"users", microphone.users},
            {"uses", toJsonArray(microphone.uses)}};
}

OrderedJson toJson(const CallModeEntry& callMode)
{
    return {{"isActive", callMode.isActive},
            {"isDetected", callMode.isDetected},
            {"override", orNull(callMode.override_)},
            {"isAutomatic", callMode.isAutomatic},
            {"level", callMode.level},
            {"excludedApps", callMode.excludedApps},
            {"names", callMode.names}};
}

std::string dump(const OrderedJson& json, int indent)
{
    return json.dump(indent, ' ', false, OrderedJson::error_handler_t::replace);
}

} // namespace fadewell
