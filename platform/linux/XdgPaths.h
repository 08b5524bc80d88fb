#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace fadewell {

/// The folders that the desktop's base directory standard names, read once from an environment.
/// Relative paths in variables are ignored, as the standard demands.
struct XdgPaths {
    using Environment = std::function<std::optional<std::string>(const char* name)>;

    std::filesystem::path home;
    std::filesystem::path configHome;
    std::filesystem::path stateHome;
    std::filesystem::path dataHome;
    /// For sockets and files that live as long as the login session. Without XDG_RUNTIME_DIR it is
    /// /run/user/UID where that exists, else a folder of this user in the temporary folder.
    std::filesystem::path runtimeDir;
    /// `dataHome` first, then XDG_DATA_DIRS; what Flatpak and Snap export is always among them,
    /// because services are often started without it.
    std::vector<std::filesystem::path> dataDirs;

    [[nodiscard]] static XdgPaths fromEnvironment(const Environment& environment);
    /// From this process's environment.
    [[nodiscard]] static XdgPaths current();

    [[nodiscard]] std::filesystem::path settingsFile() const;
    /// The program's own folders below `stateHome` and `runtimeDir`.
    [[nodiscard]] std::filesystem::path ownStateFolder() const;
    [[nodiscard]] std::filesystem::path ownRuntimeFolder() const;
};

/// Makes the folder and its parents where they are missing, for this user only (0700). False when
/// there is no such folder afterwards.
[[nodiscard]] bool makePrivateFolder(const std::filesystem::path& folder);

} // namespace fadewell
