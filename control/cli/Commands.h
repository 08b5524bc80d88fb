#pragma once

#include "control/cli/MixerClient.h"
#include "control/cli/Output.h"

#include <optional>
#include <string>
#include <vector>

namespace fadewell::cli {

// One function per command, with its arguments as they were typed. Each shows the state it leads
// to, and throws a Failure when it can't.

[[nodiscard]] Output apps(const MixerClient& client);
[[nodiscard]] Output outputs(const MixerClient& client);

/// Without a value only shows.
[[nodiscard]] Output
volume(const MixerClient& client, const std::string& app, const std::string& value);
/// `action` is "on", "off" or "toggle".
[[nodiscard]] Output
mute(const MixerClient& client, const std::string& app, const std::string& action);
/// `output` "system" follows the system's default output.
[[nodiscard]] Output
output(const MixerClient& client, const std::string& app, const std::string& output);
[[nodiscard]] Output forget(const MixerClient& client, const std::string& app);
[[nodiscard]] Output forgetAll(const MixerClient& client);

/// `action` is empty (shows), "on" (not muted), "off", "toggle" or "volume".
[[nodiscard]] Output
microphone(const MixerClient& client, const std::string& action, const std::string& value);

/// An empty mode only shows.
[[nodiscard]] Output callMode(const MixerClient& client, const std::string& mode);

/// Moves the volume of the app in front by one step.
[[nodiscard]] Output stepFrontmost(const MixerClient& client, bool isRaising);

/// Changes of the call settings; what is empty stays as it is.
struct CallSettingsChange {
    std::string automatic{}; ///< "on" or "off"
    std::string level{};
    std::vector<std::string> exclude{};
    std::vector<std::string> include{};
};
[[nodiscard]] Output callSettings(const MixerClient& client, const CallSettingsChange& change);

/// Opens the mixer of the running program.
[[nodiscard]] Output show(const MixerClient& client);
[[nodiscard]] Output settings(const MixerClient& client);

/// Whether the sound server lets Fadewell work, asked now.
[[nodiscard]] Output permission(const MixerClient& client);

/// Starting with the session: `action` is "on", "off" or, to show it, empty.
[[nodiscard]] Output loginItem(const MixerClient& client, const std::string& action);

/// Ends the program and returns when it has gone.
[[nodiscard]] Output quit(const MixerClient& client);

/// The words that a shell can complete, one on a line: `what` is "apps", "outputs" or "call-apps".
[[nodiscard]] Output complete(const MixerClient& client, const std::string& what);

} // namespace fadewell::cli
