#pragma once

#include "platform/linux/identity/DesktopEntry.h"
#include "platform/linux/identity/ProgramName.h"

#include <filesystem>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace fadewell {

/// The installed applications' desktop entries, found by any of their names. Read once, and again
/// when one of their folders has changed. Names are compared without regard to case. Not
/// synchronised.
class DesktopIndex final {
public:
    using Entry = std::shared_ptr<const DesktopEntry>;

    struct Config {
        std::vector<std::filesystem::path> dataDirs;   ///< the first wins
        std::vector<std::filesystem::path> binFolders; ///< where commands are looked for
        /// Below these, a folder of its own tells which application a file belongs to; in people's
        /// own folders strangers lie side by side.
        std::vector<std::filesystem::path> installRoots;
        std::vector<std::string> languages; ///< see languageTags()

        /// Of this machine and this user's environment.
        [[nodiscard]] static Config current();
    };

    explicit DesktopIndex(Config config);

    /// Reads the entries again if a folder changed since; a few file status calls otherwise.
    void refresh();

    /// All absent (null) when there is none.
    [[nodiscard]] Entry byID(std::string_view id) const;
    [[nodiscard]] Entry byProgram(std::string_view program) const;
    [[nodiscard]] Entry byWMClass(std::string_view name) const;
    [[nodiscard]] Entry byIcon(std::string_view name) const;
    /// The one application that is installed in the folder of this file.
    [[nodiscard]] Entry byFolderOf(const std::string& file) const;

    /// An entry that need not be among these.
    [[nodiscard]] Entry read(const std::filesystem::path& path) const;

    /// The program that an entry's command starts; no name when it can't be told.
    [[nodiscard]] static Program programOf(const DesktopEntry& entry);

private:
    using Map = std::map<std::string, Entry, std::less<>>;
    struct Stamp {
        std::filesystem::path folder;
        std::optional<std::filesystem::file_time_type> modified;
        bool operator==(const Stamp&) const = default;
    };

    void readAll();
    void readFolder(const std::filesystem::path& folder, const std::string& prefix, int depth);
    void add(const Entry& entry);
    void addProgram(const Entry& entry);
    void addFolder(const Entry& entry, const std::filesystem::path& file);
    [[nodiscard]] bool isApplicationFolder(const std::filesystem::path& folder) const;
    [[nodiscard]] std::filesystem::path resolved(const std::string& program) const;
    [[nodiscard]] static Stamp stamp(const std::filesystem::path& folder);

    Config config_;
    std::vector<Stamp> stamps_;
    std::set<std::filesystem::path> visited_; ///< folders that were read, at the end of all links
    Map byID_;                                ///< also those that are hidden, which mask others
    Map byProgram_;
    Map byWMClass_;
    Map byIcon_;
    Map byFolder_; ///< null where several applications share one
};

} // namespace fadewell
