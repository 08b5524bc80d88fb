#include "platform/linux/pipewire/StreamRules.h"

#include <algorithm>
#include <array>
#include <cctype>

namespace fadewell::pipewire {

namespace {

struct Skipped {
    std::string_view key;
    std::string_view value;
};
constexpr Skipped skippedStreams[] = {
#include "platform/linux/pipewire/SkippedStreams.inc"
};

bool equalIgnoringCase(std::string_view one, std::string_view other)
{
    return std::equal(
        one.begin(), one.end(), other.begin(), other.end(), [](unsigned char a, unsigned char b) {
            return std::tolower(a) == std::tolower(b);
        });
}

bool isSkipped(const Properties& node)
{
    return std::any_of(
        std::begin(skippedStreams), std::end(skippedStreams), [&](const Skipped& skipped) {
            const auto value = find(node, skipped.key);
            return value && equalIgnoringCase(*value, skipped.value);
        });
}

/// Level meters get peaks instead of sound, whatever language they are named in.
bool isMeter(const Properties& node)
{
    return isTrue(node, "resample.peaks");
}

/// JACK programs are no streams: they connect their ports themselves.
bool isJackProgram(const Properties& node)
{
    return find(node, PW_KEY_CLIENT_API) == "jack" && find(node, PW_KEY_MEDIA_TYPE) == "Audio";
}

} // namespace

bool isOwnNode(const Properties& node)
{
    return find(node, PW_KEY_NODE_NAME).value_or("").starts_with("fadewell.") ||
           find(node, PW_KEY_MEDIA_CLASS).value_or("").ends_with("/Internal");
}

StreamKind streamKind(const Properties& node, std::uint32_t ownClientID)
{
    if (isOwnNode(node) || number(node, PW_KEY_CLIENT_ID) == ownClientID ||
        find(node, PW_KEY_NODE_LINK_GROUP) || isTrue(node, PW_KEY_STREAM_MONITOR) ||
        isMeter(node) || isSkipped(node))
    {
        return StreamKind::none;
    }
    const auto mediaClass = find(node, PW_KEY_MEDIA_CLASS);
    if (mediaClass == "Stream/Output/Audio" || (!mediaClass && isJackProgram(node))) {
        return StreamKind::output;
    }
    return mediaClass == "Stream/Input/Audio" && !isTrue(node, PW_KEY_STREAM_CAPTURE_SINK)
               ? StreamKind::input
               : StreamKind::none;
}

std::optional<UntappableReason> untappableReason(const GraphNode& node)
{
    if (!node.hasInfo) {
        return std::nullopt;
    }
    if (!isTrue(node.props, PW_KEY_NODE_AUTOCONNECT)) {
        return UntappableReason::unmanaged;
    }
    if (node.isEncodedOnly()) {
        return UntappableReason::passthrough;
    }
    if (isTrue(node.props, PW_KEY_NODE_EXCLUSIVE)) {
        return UntappableReason::exclusive;
    }
    const bool isPinned =
        isTrue(node.props, PW_KEY_NODE_DONT_RECONNECT) || isTrue(node.props, "node.dont-move");
    return isPinned ? std::optional(UntappableReason::pinned) : std::nullopt;
}

} // namespace fadewell::pipewire
