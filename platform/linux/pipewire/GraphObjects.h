#pragma once

#include "platform/linux/pipewire/Properties.h"

#include <pipewire/pipewire.h>

#include <cstdint>
#include <string>
#include <vector>

namespace fadewell::pipewire {

/// What every object of the server has. Ids are used again after an object has gone, serials never
/// while the server runs.
struct GraphObject {
    std::uint32_t id = SPA_ID_INVALID;
    std::uint64_t serial = 0;
    std::uint32_t permissions = 0; ///< PW_PERM_ bits
    Properties props;              ///< few at first, all of them once hasInfo
    bool hasInfo = false;          ///< the object's own description has arrived

    /// Whether this client may change the object.
    [[nodiscard]] bool isWritable() const
    {
        constexpr std::uint32_t needed = PW_PERM_W | PW_PERM_X;
        return (permissions & needed) == needed;
    }
};

struct GraphClient : GraphObject {};

struct GraphPort : GraphObject {
    std::uint32_t nodeID = SPA_ID_INVALID;
    bool isOutput = false;
};

/// Volume and mute switch of a node; only sinks and sources are asked for them.
struct NodeVolume {
    std::vector<float> channels; ///< linear; empty until known
    bool isMuted = false;
    bool hasMute = false;

    /// This with whatever `written` knows in its place.
    [[nodiscard]] NodeVolume with(const NodeVolume& written) const
    {
        return {written.channels.empty() ? channels : written.channels,
                written.hasMute ? written.isMuted : isMuted,
                hasMute || written.hasMute};
    }

    bool operator==(const NodeVolume&) const = default;
};

struct GraphNode : GraphObject {
    pw_node_state state = PW_NODE_STATE_CREATING;
    NodeVolume volume; ///< as it shows: what was just written counts before the server says so
    NodeVolume reportedVolume;
    std::uint32_t rate = 0;     ///< of its format, in Hz; 0 until it has one
    bool offersRaw = false;     ///< plain samples are among its formats
    bool offersEncoded = false; ///< encoded sound is among its formats

    /// Nothing but encoded sound comes out of it.
    [[nodiscard]] bool isEncodedOnly() const { return offersEncoded && !offersRaw; }
};

struct GraphLink : GraphObject {
    std::uint32_t outputNode = SPA_ID_INVALID;
    std::uint32_t inputNode = SPA_ID_INVALID;
    std::uint32_t outputPort = SPA_ID_INVALID;
    std::uint32_t inputPort = SPA_ID_INVALID;
    pw_link_state state = PW_LINK_STATE_INIT;
};

/// A way through a sound card that is in use.
struct GraphRoute {
    enum class Availability {
        unknown,
        no,
        yes
    };
    std::uint32_t index = 0;
    bool isOutput = false;
    std::int32_t device = -1; ///< the card.profile.device of the node it serves
    std::string name;
    std::string portType; ///< "headphones", "speaker", "hdmi", …
    Availability available = Availability::unknown;
    bool isSaved = false; ///< the session manager keeps it and its volume as the user's choice

    bool operator==(const GraphRoute&) const = default;
};

/// A sound card or headset.
struct GraphDevice : GraphObject {
    std::vector<GraphRoute> routes; ///< the active ones
};

} // namespace fadewell::pipewire
