#pragma once

#include "platform/linux/FileDescriptor.h"

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace fadewell {

/// The settings' bytes on disk. Replaced whole by a rename, so that nobody ever reads half of it; a
/// link is followed and stays one. Readable by this user only. Not synchronised.
class SettingsFile final {
public:
    enum class Outcome {
        read,
        missing,
        unreadable
    };
    struct Contents {
        Outcome outcome = Outcome::missing;
        std::string bytes;
        std::string reason; ///< why it is unreadable
    };
    /// Tells one version of the file from another.
    struct Version {
        std::uint64_t inode = 0;
        std::int64_t seconds = 0;
        std::int64_t nanoseconds = 0;
        std::int64_t size = -1; ///< below 0: there is no file
        bool operator==(const Version&) const = default;
    };

    /// What a write outlives. A crash only is the choice where the system empties the folder when
    /// it starts: nothing waits for a disk then.
    enum class Durability {
        powerLoss,
        crash
    };

    explicit SettingsFile(std::filesystem::path path,
                          Durability durability = Durability::powerLoss);

    [[nodiscard]] const std::filesystem::path& path() const { return path_; }
    [[nodiscard]] Contents read() const;
    [[nodiscard]] Version version() const;

    /// Waits at most five seconds for other processes, which hold it for a write only. The lock
    /// ends with the value. Absent, with the reason, when it is not to be had.
    [[nodiscard]] std::optional<FileDescriptor> lock(std::string& reason) const;

    /// As durable as asked for when it returns; the reason otherwise, and the old file is still
    /// there. Call with the lock held.
    [[nodiscard]] std::optional<std::string> write(std::string_view bytes) const;

    /// Renames the file to "<name>.broken-<UTC time>", never over another one. The new path, or
    /// absent when it could not be done.
    [[nodiscard]] std::optional<std::filesystem::path> setAside() const;

private:
    /// The file itself, at the end of all links.
    [[nodiscard]] std::filesystem::path target() const;

    std::filesystem::path path_;
    Durability durability_;
};

} // namespace fadewell
