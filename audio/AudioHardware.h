#pragma once

#include "audio/AggregateDescription.h"
#include "audio/AudioTypes.h"
#include "audio/TapDescription.h"
#include "base/SerialQueue.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace fadewell {

/// A registered listener; 0 is none.
using ListenerToken = std::uint64_t;

/// The sound system as objects with properties. [any thread]
///
/// Every call returns a status (0 is success) and throws nothing. Objects made here have ids above
/// 1 that are never reused in a run. Sizes are in bytes.
class AudioHardware {
public:
    virtual ~AudioHardware() = default;

    [[nodiscard]] virtual bool has(AudioObjectID object,
                                   const AudioObjectPropertyAddress& address) = 0;
    virtual OSStatus
    isSettable(AudioObjectID object, const AudioObjectPropertyAddress& address, bool& settable) = 0;
    virtual OSStatus dataSize(AudioObjectID object,
                              const AudioObjectPropertyAddress& address,
                              std::uint32_t& size) = 0;

    /// Fills `data` as far as it reaches; `used` is how much was filled.
    virtual OSStatus getData(AudioObjectID object,
                             const AudioObjectPropertyAddress& address,
                             std::span<std::byte> data,
                             std::uint32_t& used) = 0;
    virtual OSStatus setData(AudioObjectID object,
                             const AudioObjectPropertyAddress& address,
                             std::span<const std::byte> data) = 0;

    /// Reads a property that holds a text; absent stands for a null reference.
    virtual OSStatus getString(AudioObjectID object,
                               const AudioObjectPropertyAddress& address,
                               std::optional<std::string>& text) = 0;

    /// The one qualified read ('uidd'); an unknown UID gives device 0 and status 0.
    virtual OSStatus deviceForUID(std::string_view uid, AudioObjectID& device) = 0;

    virtual OSStatus tapDescription(AudioObjectID tap, TapDescription& description) = 0;

    /// Changes a live tap; '!hog' where capture is not permitted.
    virtual OSStatus setTapDescription(AudioObjectID tap, const TapDescription& description) = 0;

    /// Posts `changed` to `queue` after each change. Once removeListener has returned on that queue
    /// nothing arrives any more, not even what was posted before.
    virtual OSStatus addListener(AudioObjectID object,
                                 const AudioObjectPropertyAddress& address,
                                 std::shared_ptr<SerialQueue> queue,
                                 std::function<void()> changed,
                                 ListenerToken& token) = 0;
    virtual OSStatus removeListener(ListenerToken token) = 0;

    /// What a tap mutes stays audible until an aggregate with it is started.
    virtual OSStatus createProcessTap(const TapDescription& description, AudioObjectID& tap) = 0;
    virtual OSStatus destroyProcessTap(AudioObjectID tap) = 0;
    virtual OSStatus createAggregateDevice(const AggregateDescription& description,
                                           AudioObjectID& device) = 0;
    virtual OSStatus destroyAggregateDevice(AudioObjectID device) = 0;

    virtual OSStatus
    createIOProc(AudioObjectID device, AudioDeviceIOProc procedure, void* client, IOProcID& id) = 0;

    /// After its return the procedure is never called again: the only call that promises so.
    virtual OSStatus destroyIOProc(AudioObjectID device, IOProcID id) = 0;
    virtual OSStatus start(AudioObjectID device, IOProcID id) = 0;

    /// The procedure may still be called afterwards.
    virtual OSStatus stop(AudioObjectID device, IOProcID id) = 0;
};

} // namespace fadewell
