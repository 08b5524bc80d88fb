#include "platform/linux/pipewire/taps/TapRouter.h"

#include "platform/linux/pipewire/StreamTargets.h"
#include "platform/linux/pipewire/taps/TapNames.h"

#include <algorithm>
#include <string_view>
#include <utility>

namespace fadewell::pipewire {
namespace {

/// Whether the stream's client speaks Pulse; absent while that isn't known. The client's own
/// description comes before its streams are announced, theirs a moment after.
std::optional<bool> pulse(const Graph& graph, const GraphNode& stream)
{
    const auto id = number(stream.props, PW_KEY_CLIENT_ID).value_or(SPA_ID_INVALID);
    const auto* client = graph.client(static_cast<std::uint32_t>(id));
    if (!stream.hasInfo && !(client && client->hasInfo)) {
        return std::nullopt;
    }
    constexpr std::string_view daemon = "pipewire-pulse";
    return find(stream.props, PW_KEY_CLIENT_API) == daemon ||
           (client != nullptr && find(client->props, PW_KEY_CLIENT_API) == daemon);
}

} // namespace

bool TapRouter::canMove(std::uint32_t node) const
{
    const auto* stream = graph_.node(node);
    if (!stream || !graph_.hasMetadata()) {
        return false;
    }
    // A Pulse client hears of the stream only while it plays on an ordinary output; moved before
    // that answer it would wait for ever.
    const auto speaks = pulse(graph_, *stream);
    return speaks && (!*speaks || stream->props.contains("pulse.attr.tlength"));
}

void TapRouter::attach(std::uint32_t node, AudioObjectID tap, const std::string& tapName)
{
    const auto found = attachments_.find(node);
    const bool isHeld = found != attachments_.end();
    const auto* stream = graph_.node(node);
    if (!stream || (isHeld && found->second.tapName == tapName)) {
        return;
    }
    const Attachment attachment{tap,
                                tapName,
                                stream->serial,
                                isHeld ? found->second.ownTarget : assignedTarget(graph_, node)};
    // First, so that no crash falls in between.
    journal(node, attachment);
    if (send(node, attachment)) {
        attachments_.insert_or_assign(node, attachment);
    }
}

bool TapRouter::send(std::uint32_t node, const Attachment& attachment)
{
    sent_.insert(node);
    if (graph_.setMetadata(node, targetObjectKey, "", attachment.tapName) < 0) {
        return false;
    }
    keepRemembered(graph_, node, attachment.ownTarget);
    return true;
}

void TapRouter::release(std::uint32_t node, AudioObjectID tap)
{
    const auto found = attachments_.find(node);
    if (found == attachments_.end() || found->second.tap != tap) {
        return;
    }
    const auto attachment = std::move(found->second);
    attachments_.erase(found); // What is written now is no move by others.
    if (graph_.node(node)) {
        giveBackTarget(graph_, node, attachment.ownTarget);
    }
    journal_.remove(attachment.serial);
}

bool TapRouter::releaseAll()
{
    const bool isAny = !attachments_.empty();
    while (!attachments_.empty()) {
        const auto& [node, attachment] = *attachments_.begin();
        release(node, attachment.tap);
    }
    return isAny;
}

void TapRouter::appeared(std::uint32_t node)
{
    sent_.erase(node);
    takeBackStray(node, targetObjectKey);
}

void TapRouter::forget(const GraphNode& stream)
{
    attachments_.erase(stream.id);
    moves_.erase(stream.id);
    journal_.remove(stream.serial);
}

void TapRouter::forgetAll()
{
    attachments_.clear();
    sent_.clear();
    moves_.clear();
    journal_.clear();
}

void TapRouter::takeBackStray(std::uint32_t node, const std::string& key)
{
    const auto target = graph_.metadataValue(node, key);
    if (!target) {
        return;
    }
    if (!graph_.node(node) && sent_.contains(node)) {
        graph_.setMetadata(node, key, "", std::nullopt);
    } else if (key == targetObjectKey && isNodeNameOf(owner(), *target) && !sent_.contains(node)) {
        graph_.setMetadata(node, targetObjectKey, "", std::nullopt);
        graph_.setMetadata(node, targetNodeKey, "", std::nullopt); // came with it
    }
}

TapRouter::Outcome TapRouter::metadataChanged(std::uint32_t node,
                                              const std::string& key,
                                              const std::optional<std::string>& value,
                                              double now)
{
    const auto found = attachments_.find(node);
    if (found == attachments_.end()) {
        if (key == targetObjectKey || key == targetNodeKey) {
            takeBackStray(node, key);
        }
        return Outcome::nothing;
    }
    if (key == targetNodeKey && value) {
        return assigned(node, found->second);
    }
    const bool isMove = key == targetObjectKey && !isOwnNodeName(value.value_or(""));
    return isMove ? moved(node, found->second, now) : Outcome::nothing;
}

TapRouter::Outcome TapRouter::assigned(std::uint32_t node, Attachment& attachment)
{
    // The session manager recalls a choice late, or somebody moves the stream, which then shows in
    // the other key. What we write to have the choice remembered names the same output again.
    const auto target = assignedTarget(graph_, node);
    if (target == attachment.ownTarget) {
        return Outcome::nothing;
    }
    attachment.ownTarget = target;
    journal(node, attachment);
    if (graph_.metadataValue(node, targetObjectKey) != attachment.tapName) {
        keepRemembered(graph_, node, target); // Ours comes after it, and would have it forgotten.
    }
    return Outcome::newTarget;
}

TapRouter::Outcome TapRouter::moved(std::uint32_t node, Attachment& attachment, double now)
{
    attachment.ownTarget = assignedTarget(graph_, node);
    if (isGivenUp(node, now)) {
        erase(node);
        return Outcome::givenUp;
    }
    journal(node, attachment);
    if (!send(node, attachment)) {
        erase(node);
    }
    return Outcome::newTarget;
}

bool TapRouter::isGivenUp(std::uint32_t node, double now)
{
    auto& moves = moves_[node];
    std::erase_if(moves, [now](double move) { return now - move > moveSeconds; });
    moves.push_back(now);
    return moves.size() >= movesToGiveUp;
}

void TapRouter::journal(std::uint32_t node, const Attachment& attachment)
{
    const auto* stream = graph_.node(node);
    if (attachment.ownTarget.empty() || !stream) {
        journal_.remove(attachment.serial);
    } else {
        journal_.record(
            {attachment.serial, text(stream->props, PW_KEY_NODE_NAME), attachment.ownTarget});
    }
}

void TapRouter::erase(std::uint32_t node)
{
    if (const auto erased = attachments_.extract(node)) {
        journal_.remove(erased.mapped().serial);
    }
}

void TapRouter::reassign(AudioObjectID from, AudioObjectID to)
{
    for (auto& [node, attachment] : attachments_) {
        if (attachment.tap == from) {
            attachment.tap = to;
        }
    }
}

std::set<std::uint32_t> TapRouter::attachedTo(AudioObjectID tap) const
{
    std::set<std::uint32_t> nodes;
    for (const auto& [node, attachment] : attachments_) {
        if (attachment.tap == tap) {
            nodes.insert(node);
        }
    }
    return nodes;
}

AudioObjectID TapRouter::tapOf(std::uint32_t node) const
{
    const auto found = attachments_.find(node);
    return found != attachments_.end() ? found->second.tap : 0;
}

std::optional<std::string> TapRouter::ownTarget(std::uint32_t node) const
{
    const auto found = attachments_.find(node);
    const auto* stream = graph_.node(node);
    if (found == attachments_.end() || stream == nullptr) {
        return std::nullopt;
    }
    const auto& own = found->second.ownTarget;
    // "-1" is the session manager's word that what the program asks for counts no more.
    const bool isFree = own.empty() && graph_.metadataValue(node, targetNodeKey) != "-1";
    return isFree ? requestedTarget(graph_, *stream).value_or("") : own;
}

} // namespace fadewell::pipewire
