#include "audio/AudioPermission.h"

#include "audio/PromptingTap.h"

#include <utility>

namespace fadewell {
namespace {

constexpr double pollInterval = 1.0;

/// One call of request(): lives in its pending task and in the caller's timer.
class PermissionRequest final : public std::enable_shared_from_this<PermissionRequest> {
public:
    PermissionRequest(const EngineContext& context,
                      std::shared_ptr<SerialQueue> queue,
                      double timeout,
                      std::function<void(bool)> answered)
        : hardware_(context.hardware)
        , clock_(context.clock)
        , queue_(std::move(queue))
        , timeout_(timeout)
        , answered_(std::move(answered))
        , prompt_(context.hardware)
    {}

    void begin()
    {
        step(0, [](PermissionRequest& request) {
            if (AudioPermission::check(*request.hardware_)) {
                request.finish(/*isAllowed=*/true);
            } else if (!request.prompt_.start()) {
                request.finish(/*isAllowed=*/false);
            } else {
                request.deadline_ = request.clock_->uptime() + request.timeout_;
                request.poll();
            }
        });
    }

    void cancel()
    {
        answered_ = nullptr;
        pending_.cancel();
        prompt_.stop();
    }

private:
    void poll()
    {
        if (clock_->uptime() >= deadline_) {
            finish(/*isAllowed=*/false);
            return;
        }
        step(pollInterval, [](PermissionRequest& request) {
            if (AudioPermission::check(*request.hardware_)) {
                request.finish(/*isAllowed=*/true);
            } else {
                request.poll();
            }
        });
    }

    void step(double delay, void (*work)(PermissionRequest&))
    {
        pending_ = queue_->after(delay, [self = shared_from_this(), work] {
            self->queue_->assertCurrent();
            work(*self);
        });
    }

    void finish(bool isAllowed)
    {
        prompt_.stop();
        if (const auto answered = std::exchange(answered_, nullptr)) {
            answered(isAllowed);
        }
    }

    const std::shared_ptr<AudioHardware> hardware_;
    const std::shared_ptr<Clock> clock_;
    const std::shared_ptr<SerialQueue> queue_;
    const double timeout_;
    double deadline_ = 0;
    std::function<void(bool)> answered_;
    PromptingTap prompt_;
    Timer pending_;
};

} // namespace

bool AudioPermission::check(AudioHardware& hardware)
{
    auto description = TapDescription::stereoGlobalTapButExcludeProcesses({});
    description.isPrivate = true;
    description.muteBehavior = TapMuteBehavior::unmuted;
    description.name = "Fadewell permission check";
    AudioObjectID tap = kAudioObjectUnknown;
    if (hardware.createProcessTap(description, tap) != kAudioHardwareNoError ||
        tap == kAudioObjectUnknown)
    {
        return false;
    }
    const OSStatus status = hardware.setTapDescription(tap, description);
    hardware.destroyProcessTap(tap);
    return status != kAudioDevicePermissionsError;
}

Timer AudioPermission::request(const EngineContext& context,
                               std::shared_ptr<SerialQueue> queue,
                               double timeout,
                               std::function<void(bool)> answered)
{
    const auto request = std::make_shared<PermissionRequest>(
        context, std::move(queue), timeout, std::move(answered));
    request->begin();
    return Timer([request] { request->cancel(); });
}

} // namespace fadewell
