#include "platform/linux/pipewire/PipeWireHardware.h"

#include "base/Logger.h"
#include "base/SystemClock.h"

#include <algorithm>
#include <cstring>
#include <fmt/format.h>
#include <utility>

namespace fadewell {

using pipewire::Connection;

namespace {

/// In seconds: what the session manager needs to move all streams, and some of the longest cycles.
constexpr double movingSeconds = 0.5;
constexpr double longCycleSeconds = 0.2;
/// A server that answers nothing in this time is none.
constexpr double answerTime = 3.0;

/// Globals, then their own descriptions, then the parameters asked for because of these.
constexpr int roundTripsToFill = 3;

/// At login this program may start before the session manager has. [locked exactly once]
bool waitForSessionManager(Connection& connection, const pipewire::Graph& graph)
{
    constexpr double slice = 0.25; // Nothing signals a new global.
    constexpr int mostSlices = 20;
    for (int i = 0; i < mostSlices && !graph.hasMetadata(); ++i) {
        connection.waitFor(slice, [&graph] { return graph.hasMetadata(); });
    }
    return graph.hasMetadata();
}

} // namespace

std::shared_ptr<PipeWireHardware> PipeWireHardware::create(
    Options options, std::shared_ptr<ProcessIdentity> identity, std::string& error)
{
    auto connection = Connection::open(std::move(options.connection), error);
    if (connection == nullptr) {
        return nullptr;
    }
    std::shared_ptr<PipeWireHardware> hardware(
        new PipeWireHardware(std::move(connection), std::move(identity)));
    hardware->journalFolder_ = std::move(options.journalFolder);
    return hardware->fillMirror(error) ? hardware : nullptr;
}

PipeWireHardware::PipeWireHardware(std::unique_ptr<Connection> connection,
                                   std::shared_ptr<ProcessIdentity> identity)
    : connection_(std::move(connection))
    , graph_(*connection_)
    , frozen_(*connection_, std::make_shared<SystemClock>())
    , devices_(graph_, ids_, listeners_, frozen_)
    , processes_(graph_, ids_, listeners_, devices_, frozen_, std::move(identity))
{
    const Connection::Lock lock(*connection_);
    connection_->onDisconnected([this] {
        Logger("pipewire").notice("PipeWire has gone");
        graph_.detach();
        connection_->disconnect();
        connection_->reconnect([this] {
            Logger("pipewire").notice("PipeWire is back");
            graph_.attach();
        });
    });
}

PipeWireHardware::~PipeWireHardware()
{
    taps_.reset();
    const Connection::Lock lock(*connection_);
    connection_->onDisconnected(nullptr);
    connection_->reconnect(nullptr);
    graph_.detach();
}

void PipeWireHardware::wakePlayers()
{
    constexpr auto cycle = "clock.force-quantum";
    const Connection::Lock lock(*connection_);
    const auto wait = [this](double seconds) {
        connection_->waitFor(seconds, [] { return false; });
    };
    wait(movingSeconds);
    if (graph_.settingsValue(cycle).value_or("0") == "0") { // Else it was chosen by hand.
        graph_.setSetting(cycle, std::to_string(graph_.longestCycle()));
        wait(longCycleSeconds);
        graph_.setSetting(cycle, "0");
        connection_->roundTrip(answerTime);
    }
}

bool PipeWireHardware::fillMirror(std::string& error)
{
    {
        const Connection::Lock lock(*connection_);
        if (const int status = connection_->connect(); status < 0) {
            error = fmt::format("No PipeWire server can be reached, is it running? ({})",
                                std::strerror(-status));
            return false;
        }
        graph_.attach();
        for (int i = 0; i < roundTripsToFill; ++i) {
            if (!connection_->roundTrip(answerTime)) {
                error = "PipeWire doesn't answer: its session manager (WirePlumber) may be missing";
                return false;
            }
        }
        if (!waitForSessionManager(*connection_, graph_)) {
            error = "PipeWire runs without a session manager: start WirePlumber";
            return false;
        }
    }
    makeTaps();
    return true;
}

bool PipeWireHardware::exists(AudioObjectID object) const
{
    const Connection::Lock lock(*connection_);
    return object == kAudioObjectSystemObject || devices_.owns(object) || processes_.owns(object);
}

std::optional<pipewire::PropertyBytes>
PipeWireHardware::systemValue(const AudioObjectPropertyAddress& address) const
{
    if (address.mSelector == kAudioHardwarePropertyTapList) {
        return pipewire::bytesOf(tapIDs());
    }
    const bool isDeviceList = address.mSelector == kAudioHardwarePropertyDevices;
    const auto aggregates = isDeviceList ? aggregateIDs() : std::vector<AudioObjectID>();
    const Connection::Lock lock(*connection_);
    switch (address.mSelector) {
    case kAudioHardwarePropertyProcessObjectList:
        return pipewire::bytesOf(processes_.processIDs());
    case kAudioHardwarePropertyDevices: {
        auto devices = devices_.deviceIDs();
        devices.insert(devices.end(), aggregates.begin(), aggregates.end());
        return pipewire::bytesOf(devices);
    }
    case kAudioHardwarePropertyDefaultOutputDevice:
        return pipewire::bytesOf(devices_.defaultOutput());
    case kAudioHardwarePropertyDefaultInputDevice:
        return pipewire::bytesOf(devices_.defaultInput());
    default:
        return std::nullopt;
    }
}

std::optional<pipewire::PropertyBytes>
PipeWireHardware::value(AudioObjectID object, const AudioObjectPropertyAddress& address) const
{
    if (object == kAudioObjectSystemObject) {
        return systemValue(address);
    }
    const Connection::Lock lock(*connection_);
    return devices_.owns(object) ? devices_.value(object, address)
                                 : processes_.value(object, address);
}

bool PipeWireHardware::hasText(AudioObjectID object,
                               const AudioObjectPropertyAddress& address) const
{
    const Connection::Lock lock(*connection_);
    return devices_.text(object, address.mSelector) ||
           (processes_.owns(object) && address.mSelector == kAudioProcessPropertyBundleID);
}

bool PipeWireHardware::has(AudioObjectID object, const AudioObjectPropertyAddress& address)
{
    if (tapsOwn(object)) {
        return tapsHave(object, address);
    }
    return value(object, address).has_value() || hasText(object, address);
}

OSStatus PipeWireHardware::isSettable(AudioObjectID object,
                                      const AudioObjectPropertyAddress& address,
                                      bool& settable)
{
    settable = false;
    if (tapsOwn(object)) {
        return tapsIsSettable(object, address, settable);
    }
    if (!exists(object)) {
        return kAudioHardwareBadObjectError;
    }
    if (!has(object, address)) {
        return kAudioHardwareUnknownPropertyError;
    }
    const Connection::Lock lock(*connection_);
    settable = devices_.isSettable(object, address);
    return kAudioHardwareNoError;
}

OSStatus PipeWireHardware::dataSize(AudioObjectID object,
                                    const AudioObjectPropertyAddress& address,
                                    std::uint32_t& size)
{
    size = 0;
    if (tapsOwn(object)) {
        return tapsDataSize(object, address, size);
    }
    if (!exists(object)) {
        return kAudioHardwareBadObjectError;
    }
    if (const auto bytes = value(object, address)) {
        size = static_cast<std::uint32_t>(bytes->size());
        return kAudioHardwareNoError;
    }
    if (hasText(object, address)) {
        size = sizeof(void*);
        return kAudioHardwareNoError;
    }
    return kAudioHardwareUnknownPropertyError;
}

OSStatus PipeWireHardware::getData(AudioObjectID object,
                                   const AudioObjectPropertyAddress& address,
                                   std::span<std::byte> data,
                                   std::uint32_t& used)
{
    used = 0;
    if (tapsOwn(object)) {
        return tapsGetData(object, address, data, used);
    }
    if (!exists(object)) {
        return kAudioHardwareBadObjectError;
    }
    const auto bytes = value(object, address);
    if (!bytes) {
        return kAudioHardwareUnknownPropertyError;
    }
    const std::size_t count = std::min(bytes->size(), data.size());
    std::copy_n(bytes->begin(), count, data.begin());
    used = static_cast<std::uint32_t>(count);
    return kAudioHardwareNoError;
}

OSStatus PipeWireHardware::setData(AudioObjectID object,
                                   const AudioObjectPropertyAddress& address,
                                   std::span<const std::byte> data)
{
    if (tapsOwn(object)) {
        return tapsSetData(object, address, data);
    }
    if (!exists(object)) {
        return kAudioHardwareBadObjectError;
    }
    const bool isKnown = has(object, address);
    const Connection::Lock lock(*connection_);
    if (!isKnown && !devices_.takesLater(object)) {
        return kAudioHardwareUnknownPropertyError;
    }
    return devices_.set(object, address, data);
}

OSStatus PipeWireHardware::getString(AudioObjectID object,
                                     const AudioObjectPropertyAddress& address,
                                     std::optional<std::string>& text)
{
    text.reset();
    if (tapsOwn(object)) {
        return tapsGetString(object, address, text);
    }
    if (!exists(object)) {
        return kAudioHardwareBadObjectError;
    }
    if (!hasText(object, address)) {
        return kAudioHardwareUnknownPropertyError;
    }
    const Connection::Lock lock(*connection_);
    text = processes_.owns(object) ? processes_.bundleID(object)
                                   : devices_.text(object, address.mSelector);
    return kAudioHardwareNoError;
}

OSStatus PipeWireHardware::deviceForUID(std::string_view uid, AudioObjectID& device)
{
    device = aggregateForUID(uid);
    if (device == kAudioObjectUnknown) {
        const Connection::Lock lock(*connection_);
        device = devices_.deviceForNodeName(uid).value_or(kAudioObjectUnknown);
    }
    return kAudioHardwareNoError;
}

OSStatus PipeWireHardware::addListener(AudioObjectID object,
                                       const AudioObjectPropertyAddress& address,
                                       std::shared_ptr<SerialQueue> queue,
                                       std::function<void()> changed,
                                       ListenerToken& token)
{
    token = 0;
    if (!tapsOwn(object) && !exists(object)) {
        return kAudioHardwareBadObjectError;
    }
    token = listeners_.add(object, address, std::move(queue), std::move(changed));
    return kAudioHardwareNoError;
}

OSStatus PipeWireHardware::removeListener(ListenerToken token)
{
    return listeners_.remove(token) ? kAudioHardwareNoError : kAudioHardwareBadObjectError;
}

ServerDescription PipeWireHardware::describeServer() const
{
    const Connection::Lock lock(*connection_);
    ServerDescription server;
    server.version = connection_->serverVersion();
    server.libraryVersion = pw_get_library_version();
    server.rate = graph_.settingsValue("clock.rate").value_or("?");
    server.quantum = graph_.settingsValue("clock.quantum").value_or("?");
    for (const auto& [id, client] : graph_.clients()) {
        if (pipewire::isTrue(client.props, "wireplumber.daemon") && server.sessionManager.empty()) {
            server.sessionManager = pipewire::text(client.props, PW_KEY_APP_NAME);
            server.sessionManagerPID = static_cast<std::int32_t>(
                pipewire::number(client.props, PW_KEY_SEC_PID).value_or(0));
        }
        server.hasPulseServer |=
            pipewire::find(client.props, "config.name") == std::string_view("pipewire-pulse.conf");
    }
    return server;
}

std::vector<UntappableProcess> PipeWireHardware::untappable()
{
    const Connection::Lock lock(*connection_);
    return processes_.untappable();
}

SoundServerInfo::State PipeWireHardware::soundServer()
{
    const pipewire::Connection::Lock lock(*connection_);
    return {"PipeWire", connection_->serverVersion(), connection_->isConnected()};
}

} // namespace fadewell
