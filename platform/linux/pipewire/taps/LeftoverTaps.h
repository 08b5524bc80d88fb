#pragma once

#include "audio/AudioTypes.h"
#include "audio/TapDescription.h"
#include "platform/linux/pipewire/Graph.h"
#include "platform/linux/pipewire/ObjectIDs.h"
#include "platform/linux/pipewire/taps/TargetJournal.h"

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace fadewell::pipewire {

/// Streams that a run which has ended sent to a tap of its own and never gave back, each as a tap
/// that can be destroyed. Belongs to the connection's lock.
class LeftoverTaps final {
public:
    /// Looks at every stream of the graph; what `journal` has of earlier runs is used up by that.
    LeftoverTaps(Graph& graph, ObjectIDs& ids, TargetJournal& journal);

    /// Nothing is assigned to any stream any more.
    void clear();

    /// To be called when a stream has gone or was assigned another target; true when the list has
    /// changed.
    bool update(std::uint32_t node);

    [[nodiscard]] bool owns(AudioObjectID tap) const { return find(tap) != leftovers_.end(); }
    [[nodiscard]] std::vector<AudioObjectID> ids() const;
    /// Absent for what is none.
    [[nodiscard]] std::optional<TapDescription> description(AudioObjectID tap) const;

    /// Gives the stream back to where it was to play; false for what is none.
    bool destroy(AudioObjectID tap);

private:
    struct Leftover {
        AudioObjectID id = 0;
        std::string ownTarget; ///< see assignedTarget()
    };
    using Leftovers = std::map<std::uint32_t, Leftover>; ///< by stream

    void forgetWhenDone();
    [[nodiscard]] bool isLeft(std::uint32_t node) const;
    [[nodiscard]] Leftovers::const_iterator find(AudioObjectID tap) const;

    Graph& graph_;
    ObjectIDs& ids_;
    TargetJournal& journal_;
    Leftovers leftovers_;
};

} // namespace fadewell::pipewire
