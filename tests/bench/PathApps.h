#pragma once

#include "tests/integration/support/ChildProcess.h"

#include <filesystem>
#include <string>
#include <vector>

namespace fadewell::integration {

/// Starts the tests' client as an app of its own. `protocol` is native or pulse, `mode` loop or
/// clock, `output` a node name, empty for the default. The program lands in `folder`.
[[nodiscard]] ChildProcess startApp(const std::filesystem::path& folder,
                                    const std::string& name,
                                    const std::string& protocol,
                                    const std::filesystem::path& sound,
                                    const std::string& mode,
                                    const std::string& output);

/// A loopback of the sound server's own to the default output, ready; `name` is what an app chooses
/// as its output. Throws std::runtime_error when it doesn't come up.
[[nodiscard]] ChildProcess startLoopback(const std::string& name);

/// The app is linked to an output itself, not through a tap.
[[nodiscard]] bool isDirect(const std::string& name, const std::string& output);

/// Runs a command of fadewellctl. Throws std::runtime_error when it fails.
void controlFadewell(std::vector<std::string> arguments);

/// Waits until a process is an app of Fadewell's; the app's identifier. Throws std::runtime_error
/// when it doesn't become one.
[[nodiscard]] std::string awaitApp(pid_t process);

} // namespace fadewell::integration
