#include "platform/linux/pipewire/taps/TapRouter.h"

#include <charconv>

namespace fadewell::pipewire {
namespace {

constexpr const char* targetObjectKey = "target.object";
constexpr const char* targetNodeKey = "target.node";

bool isOwnTap(const std::string& target)
{
    return target.starts_with("fadewell.");
}

} // namespace

bool TapRouter::canMove(std::uint32_t node) const
{
    const auto* stream = graph_.node(node);
    if (!stream || !graph_.hasMetadata()) {
        return false;
    }
    // Its client hears of the stream only while it plays on an ordinary output; moved before that
    // answer it would wait for ever. Which protocol it speaks is known from its own description.
    const auto api = stream->props.find("client.api");
    const bool speaksPulse = api != stream->props.end() && api->second == "pipewire-pulse";
    return stream->hasInfo && (!speaksPulse || stream->props.contains("pulse.attr.tlength"));
}

void TapRouter::attach(std::uint32_t node, AudioObjectID tap, const std::string& tapName)
{
    const auto found = attachments_.find(node);
    if (found != attachments_.end() && found->second.tapName == tapName) {
        return;
    }
    const auto own = found != attachments_.end() ? found->second.ownTarget : currentTarget(node);
    if (graph_.setMetadata(node, targetObjectKey, "", tapName) >= 0) {
        attachments_.insert_or_assign(node, Attachment{tap, tapName, own});
    }
}

void TapRouter::release(std::uint32_t node, AudioObjectID tap)
{
    const auto found = attachments_.find(node);
    if (found == attachments_.end() || found->second.tap != tap) {
        return;
    }
    const auto own = found->second.ownTarget;
    attachments_.erase(found);
    const bool isSerial = own && own->find_first_not_of("0123456789") == std::string::npos;
    graph_.setMetadata(node, targetObjectKey, isSerial ? "Spa:Id" : "", own);
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
    return found != attachments_.end() ? std::optional(found->second.ownTarget.value_or(""))
                                       : std::nullopt;
}

std::optional<std::string> TapRouter::currentTarget(std::uint32_t node) const
{
    if (auto target = graph_.metadataValue(node, targetObjectKey); target && !isOwnTap(*target)) {
        return target;
    }
    // The session manager's memory of an earlier run names the node by its id. Given back as a
    // serial, it is remembered again.
    const auto target = graph_.metadataValue(node, targetNodeKey);
    std::uint32_t id = SPA_ID_INVALID;
    if (target) {
        std::from_chars(target->data(), target->data() + target->size(), id);
    }
    const auto* output = graph_.node(id);
    return output ? std::optional(std::to_string(output->serial)) : std::nullopt;
}

} // namespace fadewell::pipewire
