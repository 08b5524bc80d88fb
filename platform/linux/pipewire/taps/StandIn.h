#pragma once

#include "audio/render.h"
#include "platform/linux/pipewire/taps/TapRender.h"

#include <memory>

namespace fadewell::pipewire {

/// Plays an app at its level while the engine has no path for it. Armed, never started:
/// costs nothing while the app is silent.
class StandIn final {
public:
    /// Begins at `gain` and `duck`, from 0 to 1; `sampleRate` in Hz.
    StandIn(double gain, double duck, double sampleRate)
        : state_(
              render_state_create(static_cast<float>(gain), static_cast<float>(duck), sampleRate))
    {
        procedure_.call = state_ ? render_io_proc : nullptr;
        procedure_.client = state_.get();
    }

    // Ramp there. [control]
    void setGain(double gain)
    {
        if (state_) {
            render_state_set_gain(state_.get(), static_cast<float>(gain));
        }
    }
    void setDuck(double duck)
    {
        if (state_) {
            render_state_set_duck(state_.get(), static_cast<float>(duck));
        }
    }

    /// What the audio thread is to call; null when memory was exhausted. Must not be in use any
    /// more when this object goes.
    [[nodiscard]] TapRender::Procedure* procedure() { return state_ ? &procedure_ : nullptr; }

private:
    struct Destroy {
        void operator()(RenderState* state) const { render_state_destroy(state); }
    };

    std::unique_ptr<RenderState, Destroy> state_;
    TapRender::Procedure procedure_;
};

} // namespace fadewell::pipewire
