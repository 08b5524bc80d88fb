#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace fadewell {

/// What an application's desktop entry says that matters here.
struct DesktopEntry {
    std::string id; ///< without ".desktop"
    std::filesystem::path path;
    std::string name;              ///< in the user's language
    std::string icon;              ///< a name in the icon theme, or an absolute path
    std::vector<std::string> exec; ///< the command, unquoted, without field codes
    std::string tryExec;
    std::string startupWMClass;
    std::string flatpakID;
    bool isTerminalEmulator = false;
    bool isNoDisplay = false;
    bool isHidden = false; ///< to be treated as if it didn't exist
    bool isApplication = false;

    bool operator==(const DesktopEntry&) const = default;

    /// Reads the file's text leniently; whatever makes no sense is skipped. `languages` as from
    /// languageTags(). Path and id are left empty.
    [[nodiscard]] static DesktopEntry parse(std::string_view text,
                                            const std::vector<std::string>& languages);

    /// Reads at most 256 KiB of the file; absent when it can't be read. `id` is left empty.
    [[nodiscard]] static std::optional<DesktopEntry>
    read(const std::filesystem::path& path, const std::vector<std::string>& languages);
};

} // namespace fadewell
