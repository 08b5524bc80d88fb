#include "platform/linux/doctor/Findings.h"

#include <fmt/format.h>
#include <string_view>

namespace fadewell {
namespace {

using enum Finding::Verdict;

std::string_view meaning(UntappableReason reason)
{
    switch (reason) {
    case UntappableReason::unmanaged:
        return "it connects itself to the output";
    case UntappableReason::passthrough:
        return "it sends encoded sound";
    case UntappableReason::exclusive:
        return "it has the output for itself";
    case UntappableReason::pinned:
        return "it may not be moved off its output";
    case UntappableReason::contested:
        return "another program keeps moving it";
    }
    return "it can't be routed";
}

Finding serverFinding(const SoundFacts& facts)
{
    if (!facts.error.empty() && facts.isPulseAudioThere) {
        return {"sound-server",
                bad,
                "Sound runs on PulseAudio here, and Fadewell needs PipeWire in its place. Install "
                "pipewire-pulse and wireplumber, log out and in again."};
    }
    if (!facts.error.empty()) {
        return {"sound-server", bad, facts.error};
    }
    return {"sound-server",
            good,
            fmt::format("PipeWire {} (library {}), {} Hz, {} frames.",
                        facts.server.version,
                        facts.server.libraryVersion,
                        facts.server.rate,
                        facts.server.quantum)};
}

Finding permissionFinding(bool isPermitted)
{
    return isPermitted
               ? Finding{"permission", good, "Other programs' sound may be changed."}
               : Finding{"permission",
                         bad,
                         "The sound server restricts Fadewell: no app can be changed. As a Flatpak "
                         "it needs the permission for all of PipeWire; otherwise see the access "
                         "rules of the session manager."};
}

Finding microphoneFinding(const SoundFacts& facts)
{
    if (!facts.microphone) {
        return {"microphone", limited, "There is no microphone."};
    }
    return facts.canMuteMicrophone
               ? Finding{"microphone", good, "Microphone: " + *facts.microphone + "."}
               : Finding{"microphone",
                         limited,
                         *facts.microphone + (facts.isPermitted
                                                  ? " can't be muted: it has no control of its own."
                                                  : " can't be muted: that is restricted, too.")};
}

} // namespace

std::vector<Finding> soundFindings(const SoundFacts& facts)
{
    std::vector<Finding> findings{serverFinding(facts)};
    if (!facts.error.empty()) {
        return findings;
    }
    findings.push_back(facts.server.sessionManager.empty()
                           ? Finding{"session-manager",
                                     limited,
                                     "The session manager doesn't tell its name; Fadewell was made "
                                     "for WirePlumber."}
                           : Finding{"session-manager", good, facts.server.sessionManager + "."});
    findings.push_back(
        facts.server.hasPulseServer
            ? Finding{"pulse", good, "Programs that speak the Pulse protocol play here."}
            : Finding{"pulse",
                      limited,
                      "Programs that speak the Pulse protocol, as most do, are silent: install "
                      "pipewire-pulse."});
    findings.push_back(permissionFinding(facts.isPermitted));
    findings.push_back(facts.output
                           ? Finding{"output", good, "Default output: " + *facts.output + "."}
                           : Finding{"output", limited, "There is no output to play on."});
    findings.push_back(microphoneFinding(facts));
    for (const auto& [process, reason] : facts.untappable) {
        const auto name = process.bundleID.value_or(fmt::format("Process {}", process.pid));
        findings.push_back({"untappable",
                            limited,
                            fmt::format("{} can't be controlled: {}.", name, meaning(reason))});
    }
    return findings;
}

std::vector<Finding> sessionFindings(const SessionFacts& facts)
{
    const auto named = [](const std::string& text) {
        return text.empty() ? std::string("unknown") : text;
    };
    std::vector<Finding> findings{{"session",
                                   good,
                                   fmt::format("Desktop {}, session {}{}.",
                                               named(facts.desktop),
                                               named(facts.sessionType),
                                               facts.sandbox.empty() ? "" : ", " + facts.sandbox)}};
    if (!facts.hasRuntimeFolder) {
        findings.push_back({"runtime-folder",
                            limited,
                            "XDG_RUNTIME_DIR is not set, as it is in a login session: the sound "
                            "server may not be found."});
    }
    findings.push_back(
        facts.canWriteSettings
            ? Finding{"settings", good, "Settings: " + facts.settingsFile}
            : Finding{"settings",
                      limited,
                      facts.settingsFile +
                          " can't be written: what you choose is lost when Fadewell ends."});
    return findings;
}

} // namespace fadewell
