#pragma once

#include "app/SoundNode.h"
#include "audio/AudioHardware.h"
#include "audio/SoundServerInfo.h"
#include "audio/StartGate.h"
#include "audio/Tappability.h"
#include "platform/linux/ProcessIdentity.h"
#include "platform/linux/pipewire/Connection.h"
#include "platform/linux/pipewire/DeviceTable.h"
#include "platform/linux/pipewire/FrozenTime.h"
#include "platform/linux/pipewire/Graph.h"
#include "platform/linux/pipewire/ListenerTable.h"
#include "platform/linux/pipewire/ObjectIDs.h"
#include "platform/linux/pipewire/ProcessTable.h"
#include "platform/linux/pipewire/PropertyValue.h"
#include "platform/linux/pipewire/ServerDescription.h"

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace fadewell {

namespace pipewire {
class Taps;
}

/// The sound system as PipeWire has it. [any thread, but the connection's own loop thread]
///
/// Answers from the mirror and never waits for the server to read a property; only building,
/// moving and tearing down taps waits.
class PipeWireHardware final : public AudioHardware,
                               public Tappability,
                               public StartGate,
                               public SoundServerInfo {
public:
    struct Options {
        pipewire::Connection::Options connection;
        /// Where the apps' own outputs are kept for the case of a crash; empty: nowhere.
        std::filesystem::path journalFolder;
    };

    /// Connects and fills the mirror. Absent, with `error` saying what is wrong, when there is no
    /// server to talk to.
    [[nodiscard]] static std::shared_ptr<PipeWireHardware>
    create(Options options, std::shared_ptr<ProcessIdentity> identity, std::string& error);
    ~PipeWireHardware() override;

    /// Lets everybody play one longer cycle, once the session manager has moved who was tapped:
    /// players whose sample converter was caught in the middle of a buffer go on. Takes a second.
    void wakePlayers();
    PipeWireHardware(const PipeWireHardware&) = delete;
    PipeWireHardware& operator=(const PipeWireHardware&) = delete;

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
    OSStatus addListener(AudioObjectID object,
                         const AudioObjectPropertyAddress& address,
                         std::shared_ptr<SerialQueue> queue,
                         std::function<void()> changed,
                         ListenerToken& token) override;
    OSStatus removeListener(ListenerToken token) override;

    // Forwarded to the taps.
    OSStatus tapDescription(AudioObjectID tap, TapDescription& description) override;
    OSStatus setTapDescription(AudioObjectID tap, const TapDescription& description) override;
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

    [[nodiscard]] std::vector<UntappableProcess> untappable() override;
    [[nodiscard]] SoundServerInfo::State soundServer() override;

    [[nodiscard]] ServerDescription describeServer() const;

    /// Everything that sound comes from or goes to, in the order of the ids.
    [[nodiscard]] std::vector<SoundNode> soundNodes() const;

    void setGatedApps(std::vector<GatedApp> apps) override;
    void setLoweredStarts(std::optional<LoweredStarts> lowered) override;

private:
    PipeWireHardware(std::unique_ptr<pipewire::Connection> connection,
                     std::shared_ptr<ProcessIdentity> identity);
    bool fillMirror(std::string& error);

    [[nodiscard]] bool exists(AudioObjectID object) const;
    [[nodiscard]] std::optional<pipewire::PropertyBytes>
    systemValue(const AudioObjectPropertyAddress& address) const;
    [[nodiscard]] std::optional<pipewire::PropertyBytes>
    value(AudioObjectID object, const AudioObjectPropertyAddress& address) const;
    [[nodiscard]] bool hasText(AudioObjectID object,
                               const AudioObjectPropertyAddress& address) const;

    // What the tap half answers; never called with the lock held.
    void makeTaps();
    [[nodiscard]] bool tapsOwn(AudioObjectID object) const;
    [[nodiscard]] bool tapsHave(AudioObjectID object,
                                const AudioObjectPropertyAddress& address) const;
    [[nodiscard]] OSStatus tapsIsSettable(AudioObjectID object,
                                          const AudioObjectPropertyAddress& address,
                                          bool& settable) const;
    [[nodiscard]] OSStatus tapsDataSize(AudioObjectID object,
                                        const AudioObjectPropertyAddress& address,
                                        std::uint32_t& size) const;
    [[nodiscard]] OSStatus tapsGetData(AudioObjectID object,
                                       const AudioObjectPropertyAddress& address,
                                       std::span<std::byte> data,
                                       std::uint32_t& used) const;
    [[nodiscard]] OSStatus tapsSetData(AudioObjectID object,
                                       const AudioObjectPropertyAddress& address,
                                       std::span<const std::byte> data);
    [[nodiscard]] OSStatus tapsGetString(AudioObjectID object,
                                         const AudioObjectPropertyAddress& address,
                                         std::optional<std::string>& text) const;
    [[nodiscard]] std::vector<AudioObjectID> tapIDs() const;
    [[nodiscard]] std::vector<AudioObjectID> aggregateIDs() const;
    [[nodiscard]] AudioObjectID aggregateForUID(std::string_view uid) const;

    std::filesystem::path journalFolder_;
    std::unique_ptr<pipewire::Connection> connection_;
    pipewire::ListenerTable listeners_;
    pipewire::ObjectIDs ids_;
    pipewire::Graph graph_;
    pipewire::FrozenTime frozen_;
    pipewire::DeviceTable devices_;
    pipewire::ProcessTable processes_;
    std::shared_ptr<pipewire::Taps> taps_; ///< shared only because its type is told nowhere here
};

} // namespace fadewell
