#pragma once

// The platform's own spellings for what crosses the audio hardware seam and the render unit.

#include "core/FourCharCode.h"

#include <cstdint>

namespace fadewell {

using OSStatus = std::int32_t;
using AudioObjectID = std::uint32_t; ///< 0 is none
using AudioObjectPropertySelector = std::uint32_t;
using AudioObjectPropertyScope = std::uint32_t;
using AudioObjectPropertyElement = std::uint32_t;

struct AudioObjectPropertyAddress {
    AudioObjectPropertySelector mSelector = 0;
    AudioObjectPropertyScope mScope = 0;
    AudioObjectPropertyElement mElement = 0;

    auto operator<=>(const AudioObjectPropertyAddress&) const = default;
};

inline constexpr AudioObjectID kAudioObjectUnknown = 0;
inline constexpr AudioObjectID kAudioObjectSystemObject = 1;
inline constexpr AudioObjectPropertyElement kAudioObjectPropertyElementMain = 0;
inline constexpr AudioObjectPropertyScope kAudioObjectPropertyScopeGlobal = fourCharCode("glob");
inline constexpr AudioObjectPropertyScope kAudioObjectPropertyScopeOutput = fourCharCode("outp");
inline constexpr AudioObjectPropertyScope kAudioObjectPropertyScopeInput = fourCharCode("inpt");
inline constexpr AudioObjectPropertyScope kAudioObjectPropertyScopeWildcard = fourCharCode("****");

inline constexpr AudioObjectPropertySelector kAudioHardwarePropertyDefaultOutputDevice =
    fourCharCode("dOut");
inline constexpr AudioObjectPropertySelector kAudioHardwarePropertyDefaultInputDevice =
    fourCharCode("dIn ");
inline constexpr AudioObjectPropertySelector kAudioHardwarePropertyTranslateUIDToDevice =
    fourCharCode("uidd");
inline constexpr AudioObjectPropertySelector kAudioHardwarePropertyProcessObjectList =
    fourCharCode("prs#");
inline constexpr AudioObjectPropertySelector kAudioHardwarePropertyDevices = fourCharCode("dev#");
inline constexpr AudioObjectPropertySelector kAudioHardwarePropertyTapList = fourCharCode("tps#");
inline constexpr AudioObjectPropertySelector kAudioProcessPropertyIsRunning = fourCharCode("pir?");
inline constexpr AudioObjectPropertySelector kAudioProcessPropertyDevices = fourCharCode("pdv#");
inline constexpr AudioObjectPropertySelector kAudioProcessPropertyPID = fourCharCode("ppid");
inline constexpr AudioObjectPropertySelector kAudioProcessPropertyBundleID = fourCharCode("pbid");
inline constexpr AudioObjectPropertySelector kAudioProcessPropertyIsRunningOutput =
    fourCharCode("piro");
inline constexpr AudioObjectPropertySelector kAudioProcessPropertyIsRunningInput =
    fourCharCode("piri");
inline constexpr AudioObjectPropertySelector kAudioDevicePropertyStreams = fourCharCode("stm#");
inline constexpr AudioObjectPropertySelector kAudioDevicePropertyIsHidden = fourCharCode("hidn");
inline constexpr AudioObjectPropertySelector kAudioDevicePropertyDeviceUID = fourCharCode("uid ");
inline constexpr AudioObjectPropertySelector kAudioObjectPropertyName = fourCharCode("lnam");
inline constexpr AudioObjectPropertySelector kAudioDevicePropertyTransportType =
    fourCharCode("tran");
inline constexpr AudioObjectPropertySelector kAudioDevicePropertyDataSource = fourCharCode("ssrc");
inline constexpr AudioObjectPropertySelector kAudioDevicePropertyVolumeScalar =
    fourCharCode("volm");
inline constexpr AudioObjectPropertySelector kAudioDevicePropertyMute = fourCharCode("mute");
inline constexpr AudioObjectPropertySelector kAudioDevicePropertyDeviceIsAlive =
    fourCharCode("livn");
inline constexpr AudioObjectPropertySelector kAudioDevicePropertyNominalSampleRate =
    fourCharCode("nsrt");
inline constexpr AudioObjectPropertySelector kAudioTapPropertyDescription = fourCharCode("tdsc");
inline constexpr AudioObjectPropertySelector kAudioTapPropertyFormat = fourCharCode("tfmt");

/// The data source of a built-in output while headphones are plugged in.
inline constexpr std::uint32_t kAudioDataSourceHeadphones = fourCharCode("hdpn");

inline constexpr OSStatus kAudioHardwareNoError = 0;
inline constexpr OSStatus kAudioHardwareNotRunningError =
    static_cast<OSStatus>(fourCharCode("stop"));
inline constexpr OSStatus kAudioHardwareUnspecifiedError =
    static_cast<OSStatus>(fourCharCode("what"));
inline constexpr OSStatus kAudioHardwareUnknownPropertyError =
    static_cast<OSStatus>(fourCharCode("who?"));
inline constexpr OSStatus kAudioHardwareBadPropertySizeError =
    static_cast<OSStatus>(fourCharCode("!siz"));
inline constexpr OSStatus kAudioHardwareIllegalOperationError =
    static_cast<OSStatus>(fourCharCode("nope"));
inline constexpr OSStatus kAudioHardwareBadObjectError =
    static_cast<OSStatus>(fourCharCode("!obj"));
inline constexpr OSStatus kAudioHardwareBadDeviceError =
    static_cast<OSStatus>(fourCharCode("!dev"));
inline constexpr OSStatus kAudioHardwareUnsupportedOperationError =
    static_cast<OSStatus>(fourCharCode("unop"));
inline constexpr OSStatus kAudioHardwareNotReadyError = static_cast<OSStatus>(fourCharCode("nrdy"));
inline constexpr OSStatus kAudioDevicePermissionsError =
    static_cast<OSStatus>(fourCharCode("!hog"));

inline constexpr std::uint32_t kAudioFormatLinearPCM = fourCharCode("lpcm");
inline constexpr std::uint32_t kAudioFormatFlagIsFloat = 1U << 0;
inline constexpr std::uint32_t kAudioFormatFlagIsPacked = 1U << 3;
inline constexpr std::uint32_t kAudioFormatFlagIsNonInterleaved = 1U << 5;

/// 40 bytes, as the tap-format property holds it.
struct AudioStreamBasicDescription {
    double mSampleRate = 0;
    std::uint32_t mFormatID = 0;
    std::uint32_t mFormatFlags = 0;
    std::uint32_t mBytesPerPacket = 0;
    std::uint32_t mFramesPerPacket = 0;
    std::uint32_t mBytesPerFrame = 0;
    std::uint32_t mChannelsPerFrame = 0;
    std::uint32_t mBitsPerChannel = 0;
    std::uint32_t mReserved = 0;

    bool operator==(const AudioStreamBasicDescription&) const = default;
};
static_assert(sizeof(AudioStreamBasicDescription) == 40);

struct AudioBuffer {
    std::uint32_t mNumberChannels = 0; ///< interleaved in this buffer
    std::uint32_t mDataByteSize = 0;
    void* mData = nullptr;
};

/// Followed in memory by further buffers when mNumberBuffers is above 1.
struct AudioBufferList {
    std::uint32_t mNumberBuffers = 0;
    AudioBuffer mBuffers[1];
};

struct AudioTimeStamp {
    double mSampleTime = 0;      ///< frames since the device started
    std::uint64_t mHostTime = 0; ///< nanoseconds of the monotonic clock
    std::uint32_t mFlags = 0;    ///< 1: sample time valid, 2: host time valid
};

/// Called on the audio thread for every buffer: it must not allocate, lock or make system calls.
using AudioDeviceIOProc = OSStatus (*)(AudioObjectID device,
                                       const AudioTimeStamp* now,
                                       const AudioBufferList* input,
                                       const AudioTimeStamp* inputTime,
                                       AudioBufferList* output,
                                       const AudioTimeStamp* outputTime,
                                       void* client) noexcept;

/// A registered I/O procedure; 0 is none.
using IOProcID = std::uint32_t;

} // namespace fadewell
