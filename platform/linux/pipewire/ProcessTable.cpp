#include "platform/linux/pipewire/ProcessTable.h"

#include "platform/linux/pipewire/StreamTargets.h"

#include <algorithm>
#include <string_view>
#include <utility>

namespace fadewell::pipewire {

namespace {

ClientHints hintsOf(const GraphNode& node, const GraphClient* client)
{
    static const Properties nothing;
    const Properties& clientProps = client == nullptr ? nothing : client->props;
    const auto either = [&](std::string_view key) {
        return std::string(find(clientProps, key).value_or(find(node.props, key).value_or("")));
    };
    return {.portalAppID = either("pipewire.access.portal.app_id"),
            .applicationID = either(PW_KEY_APP_ID),
            .applicationName = either(PW_KEY_APP_NAME),
            .processBinary = either(PW_KEY_APP_PROCESS_BINARY),
            .iconName = either(PW_KEY_APP_ICON_NAME),
            .nodeName = text(node.props, PW_KEY_NODE_NAME),
            .clientAPI = either(PW_KEY_CLIENT_API)};
}

std::uint32_t clientIDOf(const Properties& node)
{
    return static_cast<std::uint32_t>(number(node, PW_KEY_CLIENT_ID).value_or(SPA_ID_INVALID));
}

} // namespace

ProcessTable::ProcessTable(Graph& graph,
                           ObjectIDs& ids,
                           ListenerTable& listeners,
                           DeviceTable& devices,
                           FrozenTime& frozen,
                           std::shared_ptr<ProcessIdentity> identity)
    : graph_(graph)
    , ids_(ids)
    , listeners_(listeners)
    , devices_(devices)
    , frozen_(frozen)
    , identity_(std::move(identity))
{
    const Connection::Lock lock(graph_.connection());
    graph_.addObserver(*this);
    frozen_.add(*this);
    devices_.onChanged([this] { refresh(); });
}

ProcessTable::~ProcessTable()
{
    const Connection::Lock lock(graph_.connection());
    graph_.removeObserver(*this);
    frozen_.remove(*this);
}

void ProcessTable::refresh()
{
    for (auto& [object, process] : processes_) {
        refreshProcess(object, process);
    }
}

void ProcessTable::clientChanged(const GraphClient& client)
{
    for (const auto& [id, node] : graph_.nodes()) {
        if (clientIDOf(node.props) == client.id) {
            update(node);
        }
    }
}

void ProcessTable::clientRemoved(const GraphClient& client)
{
    if (pidsOfClient_.erase(client.id) > 0) {
        dropUnclaimed();
    }
}

void ProcessTable::giveUp(std::uint32_t node)
{
    const GraphNode* const stream = graph_.node(node);
    if (stream != nullptr) {
        givenUp_.insert(node);
        update(*stream);
    }
}

void ProcessTable::nodeRemoved(const GraphNode& node)
{
    givenUp_.erase(node.id);
    forget(node.id);
}

void ProcessTable::linkChanged(const GraphLink& link)
{
    for (const std::uint32_t end : {link.outputNode, link.inputNode}) {
        const GraphNode* const node = graph_.node(end);
        if (node != nullptr && streams_.contains(end)) {
            update(*node);
        }
    }
}

/// The session manager moves a stream by linking it anew, and the stream stands still in between.
void ProcessTable::linkRemoved(const GraphLink& link)
{
    for (const std::uint32_t end : {link.outputNode, link.inputNode}) {
        const auto found = streams_.find(end);
        if (found != streams_.end() && found->second.isRunning && !found->second.untappable &&
            !isLinked(end))
        {
            found->second.movingUntil = frozen_.start();
        }
    }
    linkChanged(link);
}

bool ProcessTable::isLinked(std::uint32_t node) const
{
    return !graph_.linksBetween(node, SPA_ID_INVALID).empty() ||
           !graph_.linksBetween(SPA_ID_INVALID, node).empty();
}

bool ProcessTable::isMoving(const Stream& stream) const
{
    return stream.movingUntil && !frozen_.isOver(*stream.movingUntil);
}

void ProcessTable::metadataChanged(std::uint32_t subject,
                                   const std::string& key,
                                   const std::optional<std::string>& /*value*/)
{
    const auto stream = streams_.find(subject);
    if (stream != streams_.end() && key.starts_with("target.")) {
        refreshPID(stream->second.pid);
    }
}

void ProcessTable::metadataAvailable(bool isAvailable)
{
    if (!isAvailable) {
        freeze();
    }
}

void ProcessTable::disconnected()
{
    freeze();
    while (!streams_.empty()) {
        forget(streams_.begin()->first);
    }
    givenUp_.clear();
    pidsOfClient_.clear();
    dropUnclaimed();
}

void ProcessTable::freeze()
{
    frozenUntil_ = frozen_.start();
    for (auto& [object, process] : processes_) {
        process.isFrozen = true;
    }
}

void ProcessTable::thaw()
{
    for (const auto& [id, node] : graph_.nodes()) {
        const auto stream = streams_.find(id);
        if (stream != streams_.end() && stream->second.movingUntil && !isMoving(stream->second)) {
            update(node);
        }
    }
    if (!frozenUntil_ || !frozen_.isOver(*frozenUntil_)) {
        return;
    }
    frozenUntil_.reset();
    for (auto& [object, process] : processes_) {
        process.isFrozen = false;
    }
    refresh();
    dropUnclaimed();
}

std::optional<ProcessTable::Stream> ProcessTable::examine(const GraphNode& node)
{
    const StreamKind kind = streamKind(node.props, graph_.connection().clientID());
    if (kind == StreamKind::none) {
        return std::nullopt;
    }
    const auto pid = pids_.resolve(node.props, graph_.client(clientIDOf(node.props)));
    if (!pid) {
        return std::nullopt;
    }
    Stream stream;
    stream.serial = node.serial;
    stream.pid = *pid;
    stream.kind = kind;
    stream.untappable =
        givenUp_.contains(node.id) ? UntappableReason::contested : untappableReason(node);
    stream.isKnown = node.hasInfo;
    stream.isRunning =
        node.hasInfo && node.state == PW_NODE_STATE_RUNNING && isHeard(node.id, stream);
    return stream;
}

std::optional<ProcessTable::Owner> ProcessTable::ownerOf(const GraphClient& client)
{
    const auto pid = client.hasInfo ? pids_.resolve({}, &client) : std::nullopt;
    if (!pid) {
        return std::nullopt;
    }
    const AudioObjectID object = ids_.forProcess(*pid);
    const auto known = processes_.find(object);
    const auto appID = known != processes_.end()
                           ? known->second.bundleID
                           : identity_->peekBundleID(*pid, hintsOf(GraphNode{}, &client));
    return Owner{object, appID.value_or("")};
}

bool ProcessTable::isTappable(std::uint32_t node) const
{
    const auto found = streams_.find(node);
    return found != streams_.end() && found->second.isKnown && found->second.isTappable();
}

bool ProcessTable::isHeard(std::uint32_t node, const Stream& stream) const
{
    const auto isSink = [this](std::uint32_t end) {
        const GraphNode* const found = graph_.node(end);
        return found != nullptr && find(found->props, PW_KEY_MEDIA_CLASS) == "Audio/Sink";
    };
    if (stream.kind == StreamKind::input) {
        // Without a microphone the default source is a sink's monitor: that is no recording of one.
        const auto links = graph_.linksBetween(SPA_ID_INVALID, node);
        return links.empty() || std::any_of(links.begin(), links.end(), [&](const auto* link) {
                   return !isSink(link->outputNode);
               });
    }
    // A JACK program always runs; it plays when it is connected to something.
    const auto links = graph_.linksBetween(node, SPA_ID_INVALID);
    return stream.untappable != UntappableReason::unmanaged ||
           std::any_of(links.begin(), links.end(), [&](const auto* link) {
               return isSink(link->inputNode);
           });
}

void ProcessTable::update(const GraphNode& node)
{
    const auto known = streams_.find(node.id);
    auto examined = examine(node);
    if (!examined || (known != streams_.end() && known->second.pid != examined->pid)) {
        forget(node.id);
    }
    if (!examined) {
        return;
    }
    Stream& stream = streams_[node.id];
    examined->toldAs = stream.toldAs;
    if (isMoving(stream) && !(examined->isRunning && isLinked(node.id))) {
        examined->isRunning = true;
        examined->movingUntil = stream.movingUntil;
    }
    stream = *examined;
    // Who it is gets decided once, so everything that it says of itself has to be there.
    const GraphClient* const client = graph_.client(clientIDOf(node.props));
    if (stream.isKnown && (client == nullptr || client->hasInfo)) {
        appear(node, stream.pid);
    }
    refreshPID(stream.pid);
    tell(node.id, stream);
}

void ProcessTable::forget(std::uint32_t node)
{
    const auto forgotten = streams_.extract(node);
    if (!forgotten) {
        return;
    }
    const Stream& stream = forgotten.mapped();
    refreshPID(stream.pid);
    if (stream.toldAs != kAudioObjectUnknown && streamObserver_ != nullptr) {
        streamObserver_->streamGone(stream.toldAs, node);
    }
    dropUnclaimed();
}

void ProcessTable::appear(const GraphNode& node, std::int32_t pid)
{
    const std::uint32_t clientID = clientIDOf(node.props);
    const GraphClient* const client = graph_.client(clientID);
    if (client != nullptr) {
        pidsOfClient_[clientID].insert(pid);
    }
    const AudioObjectID object = ids_.forProcess(pid);
    if (processes_.contains(object)) {
        return;
    }
    Process& process = processes_[object];
    process.pid = pid;
    process.bundleID = identity_->bundleID(pid, hintsOf(node, client));
    order_.push_back(object);
    refreshProcess(object, process);
    listeners_.notify(kAudioObjectSystemObject, kAudioHardwarePropertyProcessObjectList);
}

void ProcessTable::dropUnclaimed()
{
    std::set<std::int32_t> claimed;
    for (const auto& [client, pids] : pidsOfClient_) {
        claimed.insert(pids.begin(), pids.end());
    }
    for (const auto& [node, stream] : streams_) {
        claimed.insert(stream.pid);
    }
    const auto dropped = std::erase_if(processes_, [&](const auto& entry) {
        const std::int32_t pid = entry.second.pid;
        const bool isKept = claimed.contains(pid) || (frozenUntil_ && identity_->isRunning(pid));
        if (!isKept) {
            std::erase(order_, entry.first);
            identity_->forget(pid);
        }
        return !isKept;
    });
    if (dropped > 0) {
        listeners_.notify(kAudioObjectSystemObject, kAudioHardwarePropertyProcessObjectList);
    }
}

void ProcessTable::tell(std::uint32_t node, Stream& stream)
{
    const AudioObjectID object = ids_.forProcess(stream.pid);
    const bool isToBeTold = stream.isTappable() && processes_.contains(object);
    const AudioObjectID told = std::exchange(stream.toldAs, isToBeTold ? object : 0);
    if (streamObserver_ == nullptr) {
        return;
    }
    if (!isToBeTold && told != kAudioObjectUnknown) {
        streamObserver_->streamGone(told, node);
    } else if (isToBeTold && told == kAudioObjectUnknown) {
        streamObserver_->streamAppeared(object, node);
    } else if (isToBeTold) {
        streamObserver_->streamChanged(object, node);
    }
}

void ProcessTable::refreshPID(std::int32_t pid)
{
    const auto found = processes_.find(ids_.forProcess(pid));
    if (found != processes_.end()) {
        refreshProcess(found->first, found->second);
    }
}

void ProcessTable::refreshProcess(AudioObjectID object, Process& process)
{
    const auto isRunning = [&](auto counts) {
        return std::any_of(streams_.begin(), streams_.end(), [&](const auto& entry) {
            const Stream& stream = entry.second;
            return stream.pid == process.pid && stream.isRunning && counts(stream);
        });
    };
    bool output = isRunning([](const Stream& stream) { return stream.isTappable(); });
    bool input = isRunning([](const Stream& stream) { return stream.kind == StreamKind::input; });
    auto devices = devicesOf(process.pid);
    if (process.isFrozen) {
        process.isFrozen = !graph_.hasMetadata() || output < process.isRunningOutput ||
                           input < process.isRunningInput || devices != process.outputDevices;
        output |= process.isRunningOutput;
        input |= process.isRunningInput;
        devices = process.outputDevices;
    }
    const bool outputChanged = std::exchange(process.isRunningOutput, output) != output;
    const bool inputChanged = std::exchange(process.isRunningInput, input) != input;
    if (outputChanged) {
        listeners_.notify(object, kAudioProcessPropertyIsRunningOutput);
    }
    if (inputChanged) {
        listeners_.notify(object, kAudioProcessPropertyIsRunningInput);
    }
    if (outputChanged || inputChanged) {
        listeners_.notify(object, kAudioProcessPropertyIsRunning);
    }
    if (process.outputDevices != devices) {
        process.outputDevices = std::move(devices);
        listeners_.notify(object, kAudioProcessPropertyDevices, kAudioObjectPropertyScopeOutput);
    }
}

std::vector<AudioObjectID> ProcessTable::devicesOf(std::int32_t pid) const
{
    std::vector<AudioObjectID> devices;
    for (const auto& [node, stream] : streams_) {
        if (stream.pid != pid || stream.kind != StreamKind::output || !stream.isKnown) {
            continue;
        }
        const auto device = deviceOf(node);
        if (device != kAudioObjectUnknown &&
            std::find(devices.begin(), devices.end(), device) == devices.end())
        {
            devices.push_back(device);
        }
    }
    return devices;
}

AudioObjectID ProcessTable::deviceOf(std::uint32_t node) const
{
    const GraphNode* const stream = graph_.node(node);
    if (stream == nullptr) {
        return devices_.defaultOutput();
    }
    auto target = ownTarget_ ? ownTarget_(node) : std::nullopt;
    if (!target) {
        target = currentTarget(graph_, *stream);
    }
    const auto device = target ? devices_.deviceForTarget(*target) : std::nullopt;
    return device.value_or(devices_.defaultOutput());
}

} // namespace fadewell::pipewire
