#pragma once

#include "audio/AudioTypes.h"
#include "platform/linux/pipewire/Graph.h"

#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace fadewell::pipewire {

/// Sends apps' streams into taps and gives them back to where they played before. Belongs to the
/// connection's lock.
///
/// Streams are moved by asking the session manager, never by touching its links. They are sent to a
/// tap by its name: by serial the session manager would remember the tap as the user's choice.
class TapRouter final {
public:
    explicit TapRouter(Graph& graph)
        : graph_(graph)
    {}

    /// Whether the stream can be moved now without harm.
    [[nodiscard]] bool canMove(std::uint32_t node) const;

    /// Sends the stream into the tap; remembers where it was to play, unless that is known already.
    /// Nothing happens to a stream that is in this tap.
    void attach(std::uint32_t node, AudioObjectID tap, const std::string& tapName);

    /// Gives the stream back, unless it is in another tap by now.
    void release(std::uint32_t node, AudioObjectID tap);

    /// The stream has gone.
    void forget(std::uint32_t node) { attachments_.erase(node); }
    void forgetAll() { attachments_.clear(); }

    [[nodiscard]] std::set<std::uint32_t> attachedTo(AudioObjectID tap) const;

    /// The tap that holds the stream; 0 for none.
    [[nodiscard]] AudioObjectID tapOf(std::uint32_t node) const;

    /// Where a stream in a tap would play by itself, as the session manager's metadata names it (a
    /// serial or a node.name); empty for the default output. Absent for a stream that is in no tap.
    [[nodiscard]] std::optional<std::string> ownTarget(std::uint32_t node) const;

private:
    struct Attachment {
        AudioObjectID tap = 0;
        std::string tapName;
        std::optional<std::string> ownTarget;
    };

    [[nodiscard]] std::optional<std::string> currentTarget(std::uint32_t node) const;

    Graph& graph_;
    std::map<std::uint32_t, Attachment> attachments_;
};

} // namespace fadewell::pipewire
