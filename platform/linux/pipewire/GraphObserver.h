#pragma once

#include "platform/linux/pipewire/GraphObjects.h"

#include <optional>
#include <string>

namespace fadewell::pipewire {

/// Hears of changes of the graph. Everything is called on the loop thread with the lock held, after
/// the mirror has been brought up to date; implement what matters.
class GraphObserver {
public:
    virtual ~GraphObserver() = default;

    virtual void clientChanged(const GraphClient& /*client*/) {}
    virtual void clientRemoved(const GraphClient& /*client*/) {}

    /// At once when the server announces it: its own description is still to come.
    virtual void nodeAppeared(const GraphNode& /*node*/) {}
    virtual void nodeChanged(const GraphNode& /*node*/) {}
    /// The node is no longer in the graph; `node` is what was last known of it.
    virtual void nodeRemoved(const GraphNode& /*node*/) {}

    virtual void portChanged(const GraphPort& /*port*/) {}
    virtual void portRemoved(const GraphPort& /*port*/) {}
    virtual void linkChanged(const GraphLink& /*link*/) {}
    virtual void linkRemoved(const GraphLink& /*link*/) {}
    virtual void deviceChanged(const GraphDevice& /*device*/) {}
    virtual void deviceRemoved(const GraphDevice& /*device*/) {}

    /// A value of the session's metadata; absent when it was deleted.
    virtual void metadataChanged(std::uint32_t /*subject*/,
                                 const std::string& /*key*/,
                                 const std::optional<std::string>& /*value*/)
    {}
    /// A value of the server's own settings.
    virtual void settingsChanged() {}
    /// The session manager came or went: without its metadata nothing can be routed.
    virtual void metadataAvailable(bool /*isAvailable*/) {}

    /// The server refused, with a negative errno, what was written to this object.
    virtual void writeRefused(std::uint32_t /*object*/, int /*result*/) {}

    /// The server has gone; the graph is empty.
    virtual void disconnected() {}
};

} // namespace fadewell::pipewire
