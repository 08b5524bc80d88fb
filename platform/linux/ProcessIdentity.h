#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace fadewell {

/// What a client of the sound system says of itself. Nothing here is verified, and any of it may
/// be empty, absurdly long or no UTF-8.
struct ClientHints {
    std::string portalAppID;     ///< sandbox application id, set by the sound system
    std::string applicationID;   ///< application.id
    std::string applicationName; ///< application.name
    std::string processBinary;   ///< application.process.binary
    std::string iconName;        ///< application.icon-name
    std::string nodeName;        ///< node.name of one of its streams
    std::string clientAPI;       ///< client.api, such as "pipewire-pulse" or "alsa"

    bool operator==(const ClientHints&) const = default;
};

/// Tells which application a process belongs to. [any thread; called on the sound system's loop]
class ProcessIdentity {
public:
    virtual ~ProcessIdentity() = default;

    /// The process's own bundle identifier; absent when it has none. `pid` may be made up (above
    /// 0x40000000) for a sandboxed client whose real one is hidden: then only the hints count.
    [[nodiscard]] virtual std::optional<std::string> bundleID(std::int32_t pid,
                                                              const ClientHints& hints) = 0;

    /// The same answer for a process that may turn out to have nothing to play: looks without
    /// remembering it.
    [[nodiscard]] virtual std::optional<std::string> peekBundleID(std::int32_t pid,
                                                                  const ClientHints& hints) = 0;

    /// The process has no audio client any more; what was remembered of its pid is stale.
    virtual void forget(std::int32_t pid) = 0;

    /// Whether the process still lives, as far as that can be told.
    [[nodiscard]] virtual bool isRunning(std::int32_t pid) const = 0;
};

} // namespace fadewell
