#pragma once

#include "audio/AudioTypes.h"
#include "audio/TapDescription.h"

namespace fadewell {

/// The format that a tap has and when it can be told. Until then its sample rate reads as 0.
struct SimulatedTapFormat {
    AudioStreamBasicDescription format{.mSampleRate = 48000,
                                       .mFormatID = kAudioFormatLinearPCM,
                                       .mFormatFlags = kAudioFormatFlagIsFloat |
                                                       kAudioFormatFlagIsPacked |
                                                       kAudioFormatFlagIsNonInterleaved,
                                       .mBytesPerPacket = 4,
                                       .mFramesPerPacket = 1,
                                       .mBytesPerFrame = 4,
                                       .mChannelsPerFrame = 2,
                                       .mBitsPerChannel = 32};
    int readsUntilReady = 0;      ///< reads of the format that come too early
    double secondsUntilReady = 0; ///< since the tap was made
};

/// A process tap that exists.
struct SimulatedTap {
    TapDescription description;
    SimulatedTapFormat format;
    double madeAt = 0; ///< uptime
};

} // namespace fadewell
