#pragma once

#include "platform/linux/ProcessIdentity.h"
#include "platform/linux/identity/DesktopIndex.h"
#include "platform/linux/identity/KnownApps.h"
#include "platform/linux/identity/ProcessTable.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace fadewell {

/// Which application a process belongs to.
struct ResolvedIdentity {
    std::int32_t owner = 0; ///< the application's own process; the process itself for most
    std::optional<std::string> bundleID;
    DesktopIndex::Entry entry; ///< null when nothing installed matches
    std::string name;          ///< for people; empty only where there is no name at all
    std::string iconName{};    ///< what the client calls its icon; empty when that tells nothing
};

/// Finds the application behind a process.
///
/// In this order: its sandbox; the application scope that the session manager put it in; the
/// desktop entry that it, or the nearest of its ancestors, was started from or whose program it
/// is; what the client says of itself; its program's name. A process that was started in a
/// terminal belongs to neither the terminal nor the shell. Not synchronised.
class IdentityResolver final {
public:
    /// At and above this, process identifiers are made up for clients whose own is hidden.
    static constexpr std::int32_t firstMadeUpPID = 0x40000000;

    IdentityResolver(const ProcessTable& processes, const DesktopIndex& index)
        : processes_(processes)
        , index_(index)
    {}

    [[nodiscard]] ResolvedIdentity resolve(std::int32_t pid, const ClientHints& hints) const;

    /// The entry of an application that is installed under this identifier or, for a canonical one,
    /// under any of its names here; null when there is none.
    [[nodiscard]] DesktopIndex::Entry installed(std::string_view bundleID) const;

private:
    struct Match {
        std::string bundleID;
        DesktopIndex::Entry entry;
    };
    using Found = std::optional<Match>;

    /// One process on the way up, with what it runs.
    struct Link {
        ProcessFacts facts;
        Program program;
    };
    /// A process and its ancestors up to whatever doesn't answer for what it starts.
    struct Chain {
        std::vector<Link> links;
        bool isOnOwnFeet = false; ///< started from a terminal, a shell or a launcher
    };

    [[nodiscard]] ResolvedIdentity find(std::int32_t pid, const ClientHints& hints) const;
    [[nodiscard]] Chain chain(std::int32_t pid) const;
    [[nodiscard]] Link link(ProcessFacts facts) const;
    [[nodiscard]] std::int32_t topmost(const Chain& chain,
                                       const std::function<bool(const Link&)>& belongs) const;

    [[nodiscard]] Match matchEntry(const DesktopIndex::Entry& entry) const;
    [[nodiscard]] Found matchID(std::string_view id) const;
    [[nodiscard]] Found matchName(std::string_view name) const;
    [[nodiscard]] Found matchProgram(const Link& link) const;
    [[nodiscard]] Found matchLaunch(const Link& link) const;
    [[nodiscard]] Found matchHints(const ClientHints& hints) const;

    [[nodiscard]] std::optional<ResolvedIdentity> sandboxed(const Chain& chain,
                                                            const ClientHints& hints) const;
    [[nodiscard]] std::optional<ResolvedIdentity> scoped(const Chain& chain) const;
    [[nodiscard]] std::optional<ResolvedIdentity> started(const Chain& chain,
                                                          const ClientHints& hints) const;
    [[nodiscard]] ResolvedIdentity byProgramName(const Link& link, const ClientHints& hints) const;
    [[nodiscard]] ResolvedIdentity byHintsAlone(std::int32_t pid, const ClientHints& hints) const;
    [[nodiscard]] ResolvedIdentity
    sandboxIdentity(std::int32_t owner, const std::string& id, const ClientHints& hints) const;

    const ProcessTable& processes_;
    const DesktopIndex& index_;
    const KnownApps& known_ = KnownApps::instance();
};

} // namespace fadewell
