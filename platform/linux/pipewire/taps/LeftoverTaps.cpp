#include "platform/linux/pipewire/taps/LeftoverTaps.h"

#include "audio/OwnObjects.h"
#include "platform/linux/pipewire/StreamTargets.h"
#include "platform/linux/pipewire/taps/TapNames.h"

#include <algorithm>

namespace fadewell::pipewire {

LeftoverTaps::LeftoverTaps(Graph& graph, ObjectIDs& ids, TargetJournal& journal)
    : graph_(graph)
    , ids_(ids)
    , journal_(journal)
{
    for (const auto& [id, node] : graph_.nodes()) {
        if (isLeft(id)) {
            update(id);
        }
    }
    forgetWhenDone();
}

void LeftoverTaps::clear()
{
    leftovers_.clear();
    forgetWhenDone();
}

bool LeftoverTaps::update(std::uint32_t node)
{
    if (!isLeft(node)) {
        const bool wasLeft = leftovers_.erase(node) > 0;
        forgetWhenDone();
        return wasLeft;
    }
    const auto [at, isNew] = leftovers_.try_emplace(node);
    if (isNew) {
        const auto* stream = graph_.node(node);
        const auto left =
            journal_.leftTarget(stream->serial, text(stream->props, PW_KEY_NODE_NAME));
        at->second = {ids_.next(), left.value_or("")};
    }
    return isNew;
}

std::vector<AudioObjectID> LeftoverTaps::ids() const
{
    std::vector<AudioObjectID> ids;
    for (const auto& [node, leftover] : leftovers_) {
        ids.push_back(leftover.id);
    }
    return ids;
}

std::optional<TapDescription> LeftoverTaps::description(AudioObjectID tap) const
{
    const auto found = find(tap);
    const auto* stream = found == leftovers_.end() ? nullptr : graph_.node(found->first);
    if (!stream) {
        return std::nullopt;
    }
    const auto app = pipewire::find(stream->props, PW_KEY_APP_NAME);
    TapDescription description;
    description.name = std::string(tapNamePrefix) +
                       (app ? std::string(*app) : text(stream->props, PW_KEY_NODE_NAME));
    description.muteBehavior = TapMuteBehavior::mutedWhenTapped;
    return description;
}

bool LeftoverTaps::destroy(AudioObjectID tap)
{
    const auto found = find(tap);
    if (found == leftovers_.end()) {
        return false;
    }
    giveBackTarget(graph_, found->first, found->second.ownTarget);
    leftovers_.erase(found);
    forgetWhenDone();
    return true;
}

void LeftoverTaps::forgetWhenDone()
{
    if (leftovers_.empty()) {
        journal_.forgetLeft();
    }
}

bool LeftoverTaps::isLeft(std::uint32_t node) const
{
    const auto target = graph_.metadataValue(node, targetObjectKey);
    return graph_.node(node) != nullptr && target && isLeftoverNodeName(*target) &&
           graph_.nodeNamed(*target) == nullptr;
}

LeftoverTaps::Leftovers::const_iterator LeftoverTaps::find(AudioObjectID tap) const
{
    return std::find_if(leftovers_.begin(), leftovers_.end(), [tap](const auto& entry) {
        return entry.second.id == tap;
    });
}

} // namespace fadewell::pipewire
