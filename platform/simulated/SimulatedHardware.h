#pragma once

#include "audio/AudioHardware.h"
#include "platform/simulated/CallLog.h"
#include "platform/simulated/FaultPlan.h"
#include "platform/simulated/ListenerTable.h"
#include "platform/simulated/ObjectTable.h"
#include "platform/simulated/SoundFlow.h"

#include <condition_variable>
#include <memory>
#include <mutex>

namespace fadewell {

/// A whole sound system in memory, scripted from tests and previews. [any thread]
///
/// Devices, processes, taps and aggregates are objects with the properties that the engine uses;
/// changes reach listeners as a platform's would; sound really flows, one `renderCycle` at a time.
/// Statuses name what went wrong: '!obj' no such object, 'who?' no such property, 'nope' not that
/// way, '!siz' wrong size, '!dev' no live device, '!hog' capture not permitted.
class SimulatedHardware final : public AudioHardware,
                                public std::enable_shared_from_this<SimulatedHardware> {
public:
    /// How many objects that clients made exist.
    struct Made {
        std::size_t taps = 0;
        std::size_t aggregates = 0;
        std::size_t procedures = 0;
        std::size_t listeners = 0;
        bool operator==(const Made&) const = default;
    };

    /// What happens by itself happens on `queue`, and delays pass on its clock.
    [[nodiscard]] static std::shared_ptr<SimulatedHardware>
    create(std::shared_ptr<SerialQueue> queue);

    // Processes.
    AudioObjectID addProcess(const SimulatedProcess& process);
    void removeProcess(AudioObjectID process);
    void setRunning(AudioObjectID process, bool output, bool input);
    /// Absent follows the default output.
    void setOutputDevices(AudioObjectID process, std::optional<std::vector<AudioObjectID>> devices);
    /// Every sample that it plays from now on.
    void setSound(AudioObjectID process, float left, float right);

    // Devices. The first output and the first input become the defaults.
    AudioObjectID addDevice(const SimulatedDevice& device);
    /// The device reads as no longer alive, a default moves on to the next device that can serve,
    /// and the device is gone right after the listeners were told (on the queue).
    void removeDevice(AudioObjectID device);
    /// 0 for none.
    void setDefaultOutput(AudioObjectID device);
    void setDefaultInput(AudioObjectID device);
    void setAlive(AudioObjectID device, bool isAlive);
    void setName(AudioObjectID device, const std::string& name);
    void setSampleRate(AudioObjectID device, double sampleRate);
    void setDataSource(AudioObjectID device, std::uint32_t source);
    void setInputVolume(AudioObjectID device, AudioObjectPropertyElement element, float volume);
    void setInputMute(AudioObjectID device, bool isOn);

    // Any property, also with contents that no platform should have.
    void setProperty(AudioObjectID object,
                     const AudioObjectPropertyAddress& address,
                     PropertyValue value);
    void eraseProperty(AudioObjectID object, const AudioObjectPropertyAddress& address);

    // Taps and aggregates.
    /// Of the taps made from now on.
    void setNextTapFormat(const SimulatedTapFormat& format);
    /// Of a tap that exists; its listeners are told.
    void setTapFormat(AudioObjectID tap, const AudioStreamBasicDescription& format);
    /// Of the aggregate devices made from now on.
    void setNextReadiness(const SimulatedReadiness& readiness);
    /// While capture is not permitted taps are silent, mute nothing, and refuse their description.
    void setCapturePermitted(bool isPermitted);
    /// What an earlier run left behind.
    AudioObjectID plantTap(const TapDescription& description);
    AudioObjectID plantAggregate(const AggregateDescription& description);
    [[nodiscard]] Made made() const;
    /// The aggregate devices that exist, oldest first.
    [[nodiscard]] std::vector<AggregateDescription> aggregateDescriptions() const;

    // Sound.
    /// One buffer for all channels, or one for each (which is how it begins).
    void setInterleaved(bool isInterleaved);
    /// Started procedures on the device are no longer called (or are again).
    void setStalled(AudioObjectID device, bool isStalled);
    /// Calls every started procedure once, with what the processes play. Returns what is heard at
    /// each device. Not from two threads at once.
    HeardSound renderCycle(std::uint32_t frames);
    HeardSound renderCycle(std::uint32_t frames, const PlayedSound& played);
    /// A cycle every `interval` seconds, until the timer dies.
    [[nodiscard]] Timer runCycles(std::uint32_t frames, double interval);

    [[nodiscard]] FaultPlan& faults() { return faults_; }
    [[nodiscard]] CallLog& calls() { return calls_; }

    // The platform's calls.
    [[nodiscard]] bool has(AudioObjectID object,
                           const AudioObjectPropertyAddress& address) override;
    OSStatus isSettable(AudioObjectID object,
                        const AudioObjectPropertyAddress& address,
                        bool& settable) override;
    OSStatus dataSize(AudioObjectID object,
                      const AudioObjectPropertyAddress& address,
                      std::uint32_t& size) override;
    OSStatus getData(AudioObjectID object,
                     const AudioObjectPropertyAddress& address,
                     std::span<std::byte> data,
                     std::uint32_t& used) override;
    OSStatus setData(AudioObjectID object,
                     const AudioObjectPropertyAddress& address,
                     std::span<const std::byte> data) override;
    OSStatus getString(AudioObjectID object,
                       const AudioObjectPropertyAddress& address,
                       std::optional<std::string>& text) override;
    OSStatus deviceForUID(std::string_view uid, AudioObjectID& device) override;
    OSStatus tapDescription(AudioObjectID tap, TapDescription& description) override;
    OSStatus setTapDescription(AudioObjectID tap, const TapDescription& description) override;
    OSStatus addListener(AudioObjectID object,
                         const AudioObjectPropertyAddress& address,
                         std::shared_ptr<SerialQueue> queue,
                         std::function<void()> changed,
                         ListenerToken& token) override;
    OSStatus removeListener(ListenerToken token) override;
    OSStatus createProcessTap(const TapDescription& description, AudioObjectID& tap) override;
    OSStatus destroyProcessTap(AudioObjectID tap) override;
    OSStatus createAggregateDevice(const AggregateDescription& description,
                                   AudioObjectID& device) override;
    OSStatus destroyAggregateDevice(AudioObjectID device) override;
    OSStatus createIOProc(AudioObjectID device,
                          AudioDeviceIOProc procedure,
                          void* client,
                          IOProcID& id) override;
    OSStatus destroyIOProc(AudioObjectID device, IOProcID id) override;
    OSStatus start(AudioObjectID device, IOProcID id) override;
    OSStatus stop(AudioObjectID device, IOProcID id) override;

private:
    explicit SimulatedHardware(std::shared_ptr<SerialQueue> queue)
        : queue_(std::move(queue))
    {}

    /// The lock, and what changed under it.
    struct Locked {
        std::unique_lock<std::mutex> lock;
        PropertyChanges changes;
    };

    /// Runs `work` under the lock and tells the listeners of what it changed.
    void change(const std::function<void(Locked&)>& work);

    /// A call from outside: its faults strike first, then `work` acts under the lock. Writes the
    /// log. A create passes where the new object goes.
    OSStatus perform(CallRecord record,
                     const std::function<OSStatus(Locked&)>& work,
                     AudioObjectID* made = nullptr);

    /// A call that reads one property.
    OSStatus read(const CallRecord& record,
                  const std::function<OSStatus(const PropertyValue&)>& use);

    void editProcess(AudioObjectID process, const std::function<void(SimulatedProcess&)>& edit);
    AudioObjectID makeTap(const TapDescription& description, Locked& locked);
    AudioObjectID makeAggregate(const AggregateDescription& description, Locked& locked);
    void destroyAggregate(AudioObjectID device, Locked& locked);
    [[nodiscard]] SimulatedProcedure* findProcedure(AudioObjectID device, IOProcID id);
    void dropProcedure(IOProcID id, Locked& locked);
    OSStatus write(AudioObjectID object,
                   const AudioObjectPropertyAddress& address,
                   std::span<const std::byte> data,
                   Locked& locked);
    [[nodiscard]] PlayedSound playedSound(std::uint32_t frames);

    const std::shared_ptr<SerialQueue> queue_;
    FaultPlan faults_;
    CallLog calls_;

    mutable std::mutex mutex_; ///< guards everything below; never held while calling out
    std::condition_variable callsEnded_;
    ObjectTable objects_;
    ListenerTable listeners_;
    SoundFlow::Procedures procedures_;
    IOProcID lastProcedure_ = 0;
    SimulatedTapFormat nextTapFormat_;
    SimulatedReadiness nextReadiness_;
    bool isCapturePermitted_ = true;
    bool isInterleaved_ = false;
};

} // namespace fadewell
