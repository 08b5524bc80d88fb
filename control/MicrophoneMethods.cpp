#include "control/MicrophoneMethods.h"

#include "control/BusArguments.h"
#include "control/values/BusNames.h"
#include "control/values/BusValues.h"

namespace fadewell {
namespace {

BusReply describe(const MixerModel& model)
{
    const auto& state = model.microphone.get();
    MicrophoneEntry entry{state.deviceName,
                          state.volume,
                          state.isMuted,
                          state.canMute,
                          model.microphoneUserNames.get()};
    for (const auto& user : model.microphoneUsers.get()) {
        entry.uses.push_back({user.id, user.name, user.since.time_since_epoch().count()});
    }
    return QVariantList{toBus(entry)};
}

BusReply toggle(MixerModel& model)
{
    if (!model.microphone.get().canMute) {
        return BusError{bus::error::notSupported, "There is no microphone that can be muted."};
    }
    model.toggleMicrophone();
    return QVariantList{model.microphone.get().isMuted};
}

BusReply setMuted(MixerModel& model, bool muted)
{
    if (model.microphone.get().isMuted != muted || !model.microphone.get().canMute) {
        const auto reply = toggle(model);
        if (const auto* error = std::get_if<BusError>(&reply)) {
            return *error;
        }
    }
    return QVariantList{};
}

BusReply setVolume(MixerModel& model, double volume)
{
    if (!isWithin(volume, 0, 1)) {
        return outOfRange(0, 1);
    }
    if (!model.microphone.get().volume) {
        return BusError{bus::error::notSupported,
                        "There is no microphone whose volume can be set."};
    }
    model.setMicrophoneVolume(volume);
    return QVariantList{};
}

} // namespace

std::vector<BusMethod> microphoneMethods(std::shared_ptr<MixerModel> model)
{
    using Args = const QVariantList&;
    return {
        {"Microphone",
         {},
         {{"microphone", "a{sv}"}},
         [model](Args) {
             return describe(*model);
         }},
        {"SetMicrophoneMuted",
         {{"muted", "b"}},
         {},
         [model](Args args) {
             return setMuted(*model, args[0].toBool());
         }},
        {"ToggleMicrophone",
         {},
         {{"muted", "b"}},
         [model](Args) {
             return toggle(*model);
         }},
        {"SetMicrophoneVolume",
         {{"volume", "d"}},
         {},
         [model](Args args) {
             return setVolume(*model, args[0].toDouble());
         }},
    };
}

} // namespace fadewell
