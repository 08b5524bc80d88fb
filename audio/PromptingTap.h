#pragma once

#include "audio/AudioHardware.h"
#include "audio/render.h"

#include <memory>

namespace fadewell {

/// A short-lived silent path over a tap of everything: reading it makes the system ask the user
/// for permission. Destroying it releases whatever was built. [one queue]
class PromptingTap final {
public:
    explicit PromptingTap(std::shared_ptr<AudioHardware> hardware);
    ~PromptingTap();
    PromptingTap(const PromptingTap&) = delete;
    PromptingTap& operator=(const PromptingTap&) = delete;

    /// Builds and starts the path; false when a step failed, whose objects stay until stop().
    [[nodiscard]] bool start();

    /// Releases everything, in whatever state.
    void stop();

private:
    [[nodiscard]] bool prepare();
    [[nodiscard]] bool run();

    const std::shared_ptr<AudioHardware> hardware_;
    AggregateDescription aggregateDescription_;
    AudioObjectID tap_ = kAudioObjectUnknown;
    AudioObjectID aggregate_ = kAudioObjectUnknown;
    IOProcID ioProc_ = 0;
    RenderState* state_ = nullptr;
};

} // namespace fadewell
