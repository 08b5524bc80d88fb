#include "platform/linux/pipewire/taps/Taps.h"

#include "base/SystemClock.h"
#include "base/Uuid.h"

#include <pipewire/permission.h>

#include <cerrno>
#include <utility>

namespace fadewell::pipewire {
namespace {

// At the end of the program: for all apps together to move out of their taps.
constexpr double farewellSeconds = 0.6;

} // namespace

Taps::Taps(Graph& graph,
           ObjectIDs& ids,
           ListenerTable& listeners,
           const DeviceTable& devices,
           ProcessTable& processes)
    : graph_(graph)
    , connection_(graph.connection())
    , ids_(ids)
    , listeners_(listeners)
    , devices_(devices)
    , processes_(processes)
    , router_(graph)
    , retired_(graph, router_)
    , beatTimer_(connection_, [this] { beat(); })
    , retireTimer_(connection_, [this] {
        retired_.tick(now());
        updateTimers();
        connection_.signal();
    })
{
    graph_.addObserver(*this);
    processes_.setStreamObserver(this);
    processes_.setOwnTarget([this](std::uint32_t node) { return router_.ownTarget(node); });
}

Taps::~Taps()
{
    const Connection::Lock lock(connection_);
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
    retired_.clear();
    beatTimer_.setInterval(0);
    retireTimer_.setInterval(0);
    processes_.setOwnTarget(nullptr);
    processes_.setStreamObserver(nullptr);
    graph_.removeObserver(*this);
}

bool Taps::owns(AudioObjectID object) const
{
    return taps_.contains(object) || aggregates_.contains(object);
}

std::vector<AudioObjectID> Taps::tapIDs() const
{
    std::vector<AudioObjectID> ids;
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
    if (found == taps_.end()) {
        return kAudioHardwareBadObjectError;
    }
    description = found->second.description;
    return kAudioHardwareNoError;
}

OSStatus Taps::setTapDescription(AudioObjectID tap, const TapDescription& description)
{
    const Connection::Lock lock(connection_);
    const auto found = taps_.find(tap);
    if (found == taps_.end()) {
        return kAudioHardwareBadObjectError;
    }
    if (!isCapturePermitted()) {
        return kAudioDevicePermissionsError;
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
        return kAudioHardwareBadObjectError;
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
    if (!graph_.nodeNamed(description.master)) {
        return kAudioHardwareBadDeviceError;
    }
    if (!tap->streams && !makeStreams(*tap, description.master)) {
        return kAudioHardwareNotRunningError;
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
    router_.forget(node.id);
    for (auto& [id, tap] : taps_) {
        tap.untouched.erase(node.id);
    }
}

void Taps::metadataAvailable(bool isAvailable)
{
    if (isAvailable) {
        restoreStreams();
    } else {
        dropStreams();
    }
}

void Taps::writeRefused(std::uint32_t object, int result)
{
    // A volume that may not be changed says nothing about routing: only the metadata does.
    const bool isRouting = !graph_.node(object) && !graph_.device(object);
    if (isRouting && (result == -EACCES || result == -EPERM)) {
        isRefused_ = true;
    }
}

void Taps::disconnected()
{
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

bool Taps::isCapturePermitted() const
{
    constexpr std::uint32_t needed = PW_PERM_W | PW_PERM_X;
    // Without a session manager nothing is refused; it is only not there yet.
    const bool canWrite = (graph_.metadataPermissions() & needed) == needed;
    return !isRefused_ && (canWrite || !graph_.hasMetadata());
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
        tap.streams->render().setProcedure(&object.procedure);
    }
    route(tap);
}

void Taps::disarm(TapObject& tap, const ProcedureObject& object)
{
    if (tap.activeProcedure == object.id) {
        tap.activeProcedure = 0;
        if (tap.streams) {
            tap.streams->render().setProcedure(nullptr);
        }
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
    retired_.add(tap.id, std::move(tap.streams), now());
    updateTimers();
}

double Taps::now() const
{
    return SystemClock().uptime();
}

} // namespace fadewell::pipewire
