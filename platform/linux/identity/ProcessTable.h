#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace fadewell {

/// What the kernel tells of one process. Whatever couldn't be read is empty.
struct ProcessFacts {
    std::int32_t pid = 0;
    std::int32_t parent = 0;            ///< below 1: none
    std::string command;                ///< its short name, at most 15 bytes
    std::string executable;             ///< absolute path
    std::vector<std::string> arguments; ///< with the program's own name in front
    std::string unit;                   ///< systemd unit, see unitOfCgroups()
};

/// Reads /proc, or a folder of its form. Every read is bounded; a process may end in between.
/// [any thread]
class ProcessTable final {
public:
    explicit ProcessTable(std::filesystem::path root = "/proc");

    [[nodiscard]] std::optional<ProcessFacts> read(std::int32_t pid) const;
    [[nodiscard]] std::optional<std::int32_t> parent(std::int32_t pid) const;

    /// The application whose sandbox the process runs in.
    [[nodiscard]] std::optional<std::string> flatpakID(std::int32_t pid) const;

    /// The desktop entry that this very process was started from; a process that merely inherited
    /// the mark from the one that was has none.
    [[nodiscard]] std::optional<std::string> launchedDesktopFile(std::int32_t pid) const;

    /// The application image that the process came from.
    [[nodiscard]] std::optional<std::string> appImage(std::int32_t pid) const;

private:
    [[nodiscard]] std::filesystem::path file(std::int32_t pid, const char* name) const;
    [[nodiscard]] std::optional<std::string> variable(std::int32_t pid,
                                                      std::string_view name) const;

    std::filesystem::path root_;
};

} // namespace fadewell
