#pragma once

#include "tests/integration/client/SoundFile.h"

namespace fadewell::integration {

/// What the client does, whatever protocol it speaks.
struct Playing {
    enum class Mode {
        streams, ///< the whole file in each of `streams`, one after the other
        churn, ///< `streams` that end before they play, at every stage, and one that plays [native]
        loop,  ///< the file again and again
        clock, ///< the frame that is played is the position of the output's clock [native only]
        capture ///< listens to the microphone instead; begins paused
    };

    const SoundFile& file;
    Mode mode = Mode::streams;
    int streams = 1;

    [[nodiscard]] bool isEndless() const { return mode != Mode::streams; }
};

/// The time between two streams, in milliseconds.
inline constexpr int pauseBetweenStreams = 250;

/// Play everything (or listen) and return 0, or 1 when the server refused. SIGUSR1 pauses the
/// stream as a player's pause button does, and lets it go on the next time.
int playNatively(const Playing& playing);
int playOverPulse(const Playing& playing);

} // namespace fadewell::integration
