#include "control/ChangeNotifier.h"

#include <tuple>
#include <utility>

namespace fadewell {
namespace {

auto observedFields(MixerModel& model)
{
    return std::tie(model.apps,
                    model.outputDevices,
                    model.defaultOutputUID,
                    model.needsAudioPermission,
                    model.isCallModeActive,
                    model.isCallDetected,
                    model.callAppNames,
                    model.microphone,
                    model.microphoneUserNames,
                    model.microphoneUsers,
                    model.callModeSettings,
                    model.rememberedApps);
}

auto copyFields(MixerModel& model)
{
    return std::apply([](const auto&... field) { return std::make_tuple(field.get()...); },
                      observedFields(model));
}

} // namespace

struct ChangeNotifier::State {
    void tellIfChanged()
    {
        isPending = false;
        auto fields = copyFields(*model);
        if (fields != told) { // A change may have been taken back in the same turn.
            told = std::move(fields);
            changed();
        }
    }

    std::shared_ptr<MixerModel> model;
    std::function<void()> changed;
    decltype(copyFields(std::declval<MixerModel&>())) told;
    bool isPending = false;
};

ChangeNotifier::ChangeNotifier(std::shared_ptr<MixerModel> model,
                               std::shared_ptr<SerialQueue> mainQueue,
                               std::function<void()> changed)
    : state_(std::make_shared<State>())
{
    state_->model = std::move(model);
    state_->changed = std::move(changed);
    state_->told = copyFields(*state_->model);
    const auto schedule = [weak = std::weak_ptr(state_), mainQueue](const auto& /*value*/) {
        const auto state = weak.lock();
        if (!state || std::exchange(state->isPending, true)) {
            return;
        }
        mainQueue->async([weak] {
            if (const auto alive = weak.lock()) {
                alive->tellIfChanged();
            }
        });
    };
    std::apply([&](auto&... field) { (subscriptions_.push_back(field.observe(schedule)), ...); },
               observedFields(*state_->model));
}

} // namespace fadewell
