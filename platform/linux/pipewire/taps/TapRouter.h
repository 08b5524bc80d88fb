#pragma once

#include "audio/AudioTypes.h"
#include "platform/linux/pipewire/Graph.h"
#include "platform/linux/pipewire/taps/TargetJournal.h"

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
/// tap by its name: by serial the session manager would remember the tap as the user's choice. What
/// others assign to a stream in a tap becomes its own target, and it is sent to the tap again,
/// until they insist.
class TapRouter final {
public:
    /// What a change that somebody made means.
    enum class Outcome {
        nothing,
        newTarget, ///< the stream has another target of its own
        givenUp    ///< others insist: the stream is in no tap any more and must not be taken again
    };

    TapRouter(Graph& graph, TargetJournal& journal)
        : graph_(graph)
        , journal_(journal)
    {}

    /// This run, whose mark the nodes' names carry.
    [[nodiscard]] const ProcessInstance& owner() const { return journal_.owner(); }

    /// Whether the stream can be moved now without harm.
    [[nodiscard]] bool canMove(std::uint32_t node) const;

    /// Sends the stream into the tap; remembers where it was to play, unless that is known already.
    /// Nothing happens to a stream that is in this tap.
    void attach(std::uint32_t node, AudioObjectID tap, const std::string& tapName);

    /// Gives the stream back, unless it is in another tap by now.
    void release(std::uint32_t node, AudioObjectID tap);

    /// Gives back every stream, whatever its tap is doing. Returns whether there was one.
    bool releaseAll();

    /// What is in one tap is in another one from now on: its streams became that one's.
    void reassign(AudioObjectID from, AudioObjectID to);

    /// A stream is there. What was written too late for another one that had its number before it
    /// is taken back.
    void appeared(std::uint32_t node);
    /// The stream has gone.
    void forget(const GraphNode& stream);
    /// All streams have lost what was assigned to them.
    void forgetAll();

    /// To be called for each change of the session's metadata, our own included. `now` is in
    /// seconds of the monotonic clock.
    [[nodiscard]] Outcome metadataChanged(std::uint32_t node,
                                          const std::string& key,
                                          const std::optional<std::string>& value,
                                          double now);

    [[nodiscard]] std::set<std::uint32_t> attachedTo(AudioObjectID tap) const;

    /// The tap that holds the stream; 0 for none.
    [[nodiscard]] AudioObjectID tapOf(std::uint32_t node) const;

    /// Where a stream in a tap would play by itself: a target's value, empty for the default
    /// output. Absent for a stream that is in no tap.
    [[nodiscard]] std::optional<std::string> ownTarget(std::uint32_t node) const;

    /// So many moves by others within so many seconds are somebody's will.
    static constexpr std::size_t movesToGiveUp = 3;
    static constexpr double moveSeconds = 10;

private:
    struct Attachment {
        AudioObjectID tap = 0;
        std::string tapName;
        std::uint64_t serial = 0; ///< of the stream
        std::string ownTarget;    ///< see assignedTarget()
    };

    [[nodiscard]] bool send(std::uint32_t node, const Attachment& attachment);
    [[nodiscard]] Outcome assigned(std::uint32_t node, Attachment& attachment);
    [[nodiscard]] Outcome moved(std::uint32_t node, Attachment& attachment, double now);
    [[nodiscard]] bool isGivenUp(std::uint32_t node, double now);
    void takeBackStray(std::uint32_t node, const std::string& key);
    void journal(std::uint32_t node, const Attachment& attachment);
    void erase(std::uint32_t node);

    Graph& graph_;
    TargetJournal& journal_;
    std::map<std::uint32_t, Attachment> attachments_;
    /// The streams that we wrote to, by number; gone ones until their number is used again.
    std::set<std::uint32_t> sent_;
    std::map<std::uint32_t, std::vector<double>> moves_; ///< when others moved a stream
};

} // namespace fadewell::pipewire
