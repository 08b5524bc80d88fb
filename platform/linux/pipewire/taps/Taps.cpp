#include "platform/linux/pipewire/taps/Taps.h"

#include "base/Logger.h"
#include "base/ProgramName.h"
#include "base/SystemClock.h"
#include "base/Uuid.h"
#include "platform/linux/pipewire/StreamTargets.h"
#include "platform/linux/pipewire/taps/TapNames.h"

#include <utility>

namespace fadewell::pipewire {
namespace {

// At the end of the program: for all apps together to move out of their taps.
constexpr double farewellSeconds = 0.6;

// For the server to take what is still to be written then. One that is busy drops what it hasn't
// read of a client that has gone.
constexpr double flushSeconds = 2.0;

} // namespace

Taps::Taps(Graph& graph,
           ObjectIDs& ids,
           ListenerTable& listeners,
           const DeviceTable& devices,
           ProcessTable& processes,
           std::filesystem::path journalFolder)
    : graph_(graph)
    , connection_(graph.connection())
    , ids_(ids)
    , listeners_(listeners)
    , devices_(devices)
    , processes_(processes)
    , journal_(std::move(journalFolder))
    , leftovers_(graph, ids, journal_)
    , router_(graph, journal_)
    , retired_(graph, router_, [this](const auto& streams) { return isQuietMoment(streams); })
    , levels_(devices)
    , starts_(graph, router_, devices, ids.next(), [this](auto node) { return startTarget(node); })
    , standing_(graph, ids, devices, router_, levels_, standingHost())
    , keeper_(connection_, [this](const auto& call) { forEachStreams(call); })
    , waker_(graph, keeper_, [this](const auto& call) { forEachStreams(call); })
    , beatTimer_(connection_, [this] { beat(); })
    , retireTimer_(connection_,
                   [this] {
                       retired_.tick(now());
                       updateTimers();
                       connection_.signal();
                   })
    , quietTimer_(connection_,
                  [this] {
                      quietTimer_.setInterval(0);
                      routeAll();
                      retired_.tick(now());
                  })
    , relinkTimer_(connection_, [this] { relink(); })
{
    graph_.addObserver(*this);
    processes_.setStreamObserver(this);
    processes_.setOwnTarget([this](std::uint32_t node) { return router_.ownTarget(node); });
}

Taps::~Taps()
{
    const Connection::Lock lock(connection_);
    starts_.clear();
    levels_.clear();
    standing_.retireAll();
    for (auto& [id, tap] : taps_) {
        if (tap.streams) {
            tap.streams->render().setProcedure(nullptr);
            tap.streams->synchronise();
        }
        retire(tap);
    }
    procedures_.clear();
    taps_.clear();
    connection_.waitFor(farewellSeconds, [this] { return retired_.isEmpty(); });
    router_.releaseAll();
    if (connection_.isConnected() && !connection_.roundTrip(flushSeconds)) {
        Logger("pipewire").error("The sound server doesn't answer: apps may not be given back");
    }
    retired_.clear();
    keeper_.stop();
    waker_.stop();
    beatTimer_.setInterval(0);
    retireTimer_.setInterval(0);
    quietTimer_.setInterval(0);
    relinkTimer_.setInterval(0);
    processes_.setOwnTarget(nullptr);
    processes_.setStreamObserver(nullptr);
    graph_.removeObserver(*this);
}

bool Taps::owns(AudioObjectID object) const
{
    return taps_.contains(object) || aggregates_.contains(object) || leftovers_.owns(object);
}

std::vector<AudioObjectID> Taps::tapIDs() const
{
    auto ids = leftovers_.ids();
    for (const auto& [id, tap] : taps_) {
        ids.push_back(id);
    }
    return ids;
}

std::vector<AudioObjectID> Taps::aggregateIDs() const
{
    std::vector<AudioObjectID> ids;
    for (const auto& [id, aggregate] : aggregates_) {
        ids.push_back(id);
    }
    return ids;
}

AudioObjectID Taps::aggregateForUID(std::string_view uid) const
{
    for (const auto& [id, aggregate] : aggregates_) {
        if (aggregate.description.uid == uid) {
            return id;
        }
    }
    return kAudioObjectUnknown;
}

OSStatus Taps::tapDescription(AudioObjectID tap, TapDescription& description)
{
    const Connection::Lock lock(connection_);
    const auto found = taps_.find(tap);
    const auto known = found == taps_.end() ? leftovers_.description(tap)
                                            : std::optional(found->second.description);
    if (!known) {
        return kAudioHardwareBadObjectError;
    }
    description = *known;
    return kAudioHardwareNoError;
}

OSStatus Taps::setTapDescription(AudioObjectID tap, const TapDescription& description)
{
    const Connection::Lock lock(connection_);
    const auto probed = taps_.find(tap);
    if (probed == taps_.end()) {
        return kAudioHardwareBadObjectError;
    }
    // A tap that takes nothing is there to ask; the others know by what was refused.
    const bool isKnown = probed->second.takesStreams() && isCapturePermitted();
    if (!isKnown && !askForPermission()) {
        return kAudioDevicePermissionsError;
    }
    const auto found = taps_.find(tap); // It was unlocked for a moment.
    if (found == taps_.end()) {
        return kAudioHardwareBadObjectError;
    }
    found->second.description.processes = description.processes;
    found->second.description.name = description.name;
    route(found->second);
    return kAudioHardwareNoError;
}

OSStatus Taps::createProcessTap(const TapDescription& description, AudioObjectID& tap)
{
    const Connection::Lock lock(connection_);
    TapObject object;
    object.id = ids_.next();
    object.description = description;
    if (object.description.uuid.empty()) {
        object.description.uuid = makeUUID();
    }
    tap = object.id;
    taps_.emplace(tap, std::move(object));
    listeners_.notify(kAudioObjectSystemObject, kAudioHardwarePropertyTapList);
    return kAudioHardwareNoError;
}

OSStatus Taps::destroyProcessTap(AudioObjectID tap)
{
    const Connection::Lock lock(connection_);
    const auto found = taps_.find(tap);
    if (found == taps_.end()) {
        const bool wasLeft = leftovers_.destroy(tap);
        waker_.watch();
        return wasLeft ? kAudioHardwareNoError : kAudioHardwareBadObjectError;
    }
    std::erase_if(procedures_, [&](const auto& entry) {
        const bool isOurs = aggregates_.at(entry.second->aggregate).tap == tap;
        if (isOurs) {
            disarm(found->second, *entry.second);
        }
        return isOurs;
    });
    retire(found->second);
    taps_.erase(found);
    std::erase_if(aggregates_, [&](const auto& entry) { return entry.second.tap == tap; });
    listeners_.notify(kAudioObjectSystemObject, kAudioHardwarePropertyTapList);
    updateTimers();
    return kAudioHardwareNoError;
}

OSStatus Taps::createAggregateDevice(const AggregateDescription& description, AudioObjectID& device)
{
    const Connection::Lock lock(connection_);
    if (description.taps.empty() || aggregateForUID(description.uid) != kAudioObjectUnknown) {
        return kAudioHardwareIllegalOperationError;
    }
    TapObject* tap = tapWithUUID(description.taps.front().uid);
    if (!tap) {
        return kAudioHardwareBadObjectError;
    }
    if (!devices_.deviceForNodeName(description.master)) {
        return kAudioHardwareBadDeviceError;
    }
    if (!tap->streams && !adopt(*tap, description.master)) {
        tap->output = description.master;
        if (canPlay(tap->output) && !makeStreams(*tap, tap->output)) {
            return kAudioHardwareNotRunningError;
        }
    }
    device = ids_.next();
    aggregates_.emplace(device, AggregateObject{device, tap->id, description});
    listeners_.notify(kAudioObjectSystemObject, kAudioHardwarePropertyDevices);
    return kAudioHardwareNoError;
}

OSStatus Taps::destroyAggregateDevice(AudioObjectID device)
{
    const Connection::Lock lock(connection_);
    const auto found = aggregates_.find(device);
    if (found == aggregates_.end()) {
        return kAudioHardwareBadObjectError;
    }
    std::erase_if(procedures_, [&](const auto& entry) {
        const bool isOurs = entry.second->aggregate == device;
        if (isOurs) {
            disarm(taps_.at(found->second.tap), *entry.second);
        }
        return isOurs;
    });
    aggregates_.erase(found);
    listeners_.notify(kAudioObjectSystemObject, kAudioHardwarePropertyDevices);
    return kAudioHardwareNoError;
}

OSStatus
Taps::createIOProc(AudioObjectID device, AudioDeviceIOProc call, void* client, IOProcID& id)
{
    const Connection::Lock lock(connection_);
    const auto aggregate = aggregates_.find(device);
    if (aggregate == aggregates_.end()) {
        return kAudioHardwareBadObjectError;
    }
    if (!call) {
        return kAudioHardwareIllegalOperationError;
    }
    auto object = std::make_unique<ProcedureObject>();
    object->id = nextProcedure_++;
    object->aggregate = device;
    object->procedure.call = call;
    object->procedure.client = client;
    object->procedure.device = device;
    id = object->id;
    auto& stored = *procedures_.emplace(id, std::move(object)).first->second;
    if (TapObject& tap = tapOf(stored); tap.activeProcedure == 0) {
        arm(tap, stored);
    }
    return kAudioHardwareNoError;
}

OSStatus Taps::destroyIOProc(AudioObjectID device, IOProcID id)
{
    const Connection::Lock lock(connection_);
    ProcedureObject* object = procedure(device, id);
    if (!object) {
        return kAudioHardwareBadObjectError;
    }
    disarm(tapOf(*object), *object);
    procedures_.erase(id);
    updateTimers();
    return kAudioHardwareNoError;
}

OSStatus Taps::start(AudioObjectID device, IOProcID id)
{
    const Connection::Lock lock(connection_);
    ProcedureObject* object = procedure(device, id);
    if (!object) {
        return kAudioHardwareBadObjectError;
    }
    TapObject& tap = tapOf(*object);
    if (tap.activeProcedure != id) {
        return handOver(tap, *object);
    }
    object->procedure.isStarted = true;
    tap.untouched.clear();
    route(tap);
    updateTimers();
    return kAudioHardwareNoError;
}

OSStatus Taps::stop(AudioObjectID device, IOProcID id)
{
    const Connection::Lock lock(connection_);
    ProcedureObject* object = procedure(device, id);
    if (!object) {
        return kAudioHardwareBadObjectError;
    }
    object->procedure.isStarted = false;
    updateTimers();
    return kAudioHardwareNoError;
}

void Taps::nodeRemoved(const GraphNode& node)
{
    announced_.erase(node.id);
    starts_.forget(node.id);
    standing_.streamRemoved();
    expectAnother(node);
    router_.forget(node);
    updateLeftover(node.id);
    for (auto& [id, tap] : taps_) {
        tap.untouched.erase(node.id);
    }
}

void Taps::metadataChanged(std::uint32_t subject,
                           const std::string& key,
                           const std::optional<std::string>& value)
{
    if (key == targetObjectKey) {
        updateLeftover(subject);
    }
    const auto outcome = router_.metadataChanged(subject, key, value, now());
    if (outcome == TapRouter::Outcome::givenUp) {
        Logger("taps").notice("Another program keeps moving a stream of {}: it is left alone",
                              ProgramName{text(graph_.node(subject)->props, PW_KEY_NODE_NAME)});
        processes_.giveUp(subject);
    }
    if (outcome != TapRouter::Outcome::nothing) {
        processes_.refresh();
        standing_.followStream(subject);
    }
    if (subject == PW_ID_CORE) {
        restoreStreams();
        standing_.keepOneFree();
    }
    starts_.advance();
}

void Taps::updateLeftover(std::uint32_t node)
{
    if (leftovers_.update(node)) {
        listeners_.notify(kAudioObjectSystemObject, kAudioHardwarePropertyTapList);
    }
}

void Taps::metadataAvailable(bool isAvailable)
{
    isRefused_ = false;
    if (isAvailable) {
        restoreStreams();
        retakeStreams();
    } else {
        dropStreams();
    }
}

void Taps::disconnected()
{
    clients_.clear(); // The next server gives their numbers to others.
    dropStreams();
}

void Taps::streamAppeared(AudioObjectID /*process*/, std::uint32_t /*node*/)
{
    routeAll();
}

void Taps::streamChanged(AudioObjectID /*process*/, std::uint32_t /*node*/)
{
    routeAll();
}

void Taps::streamGone(AudioObjectID /*process*/, std::uint32_t /*node*/)
{
    routeAll();
}

TapObject* Taps::tapWithUUID(std::string_view uuid)
{
    for (auto& [id, tap] : taps_) {
        if (tap.description.uuid == uuid) {
            return &tap;
        }
    }
    return nullptr;
}

ProcedureObject* Taps::procedure(AudioObjectID device, IOProcID id)
{
    const auto found = procedures_.find(id);
    const bool isThere = found != procedures_.end() && found->second->aggregate == device;
    return isThere ? found->second.get() : nullptr;
}

TapObject& Taps::tapOf(const ProcedureObject& object)
{
    return taps_.at(aggregates_.at(object.aggregate).tap);
}

void Taps::arm(TapObject& tap, ProcedureObject& object)
{
    tap.activeProcedure = object.id;
    tap.untouched.clear();
    for (const auto node : wantedStreams(tap)) {
        if (isRunning(node) && router_.tapOf(node) != tap.id) {
            tap.untouched.insert(node);
        }
    }
    if (tap.streams) {
        object.procedure.predecessor = tap.standIn ? tap.standIn->procedure() : nullptr;
        tap.streams->render().setProcedure(&object.procedure);
    }
    route(tap);
}

void Taps::disarm(TapObject& tap, ProcedureObject& object)
{
    if (tap.activeProcedure == object.id) {
        tap.activeProcedure = 0;
        setStandIn(tap, object);
        for (const auto& [id, other] : procedures_) {
            if (id != object.id && aggregates_.at(other->aggregate).tap == tap.id) {
                retarget(tap, aggregates_.at(other->aggregate).description.master);
                arm(tap, *other);
                break;
            }
        }
    }
    if (tap.streams) {
        tap.streams->synchronise();
    }
}

void Taps::retarget(TapObject& tap, const std::string& output)
{
    if (tap.streams && tap.output != output) {
        graph_.setMetadata(tap.streams->outputNode(), "target.object", "", output);
    }
    tap.output = output;
}

void Taps::retire(TapObject& tap)
{
    if (standBy(tap)) {
        return;
    }
    if (tap.streams && tap.streams->render().procedure()) {
        tap.streams->render().setProcedure(nullptr);
        tap.streams->synchronise();
    }
    retire(tap.id, std::move(tap.streams));
}

void Taps::retire(AudioObjectID tap, std::unique_ptr<TapStreams> streams)
{
    retired_.add(tap, std::move(streams), now());
    updateTimers();
}

double Taps::now() const
{
    return SystemClock().uptime();
}

} // namespace fadewell::pipewire
