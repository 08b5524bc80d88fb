#include "platform/linux/identity/ProcessTable.h"

#include "platform/linux/identity/SmallFile.h"
#include "platform/linux/identity/UnitName.h"

#include <algorithm>
#include <charconv>
#include <system_error>
#include <utility>

namespace fadewell {
namespace fs = std::filesystem;
namespace {

constexpr std::size_t shortFile = 4096;
constexpr std::size_t longFile = 128U << 10U;

std::vector<std::string> splitAtZeros(std::string_view text)
{
    std::vector<std::string> parts;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\0'), text.size());
        parts.emplace_back(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return parts;
}

struct Stat {
    std::string command;
    std::int32_t parent = 0;
};

/// "PID (command) S PARENT …": the command may hold blanks and parentheses itself.
std::optional<Stat> parseStat(std::string_view text)
{
    const std::size_t open = text.find('(');
    const std::size_t close = text.rfind(')');
    if (open == std::string_view::npos || close == std::string_view::npos || close < open ||
        text.size() < close + 5)
    {
        return std::nullopt;
    }
    Stat stat{std::string(text.substr(open + 1, close - open - 1)), 0};
    const auto rest = text.substr(close + 4); // Behind ") S ".
    const auto result = std::from_chars(rest.data(), rest.data() + rest.size(), stat.parent);
    return result.ec == std::errc{} ? std::optional(std::move(stat)) : std::nullopt;
}

} // namespace

ProcessTable::ProcessTable(fs::path root)
    : root_(std::move(root))
{}

fs::path ProcessTable::file(std::int32_t pid, const char* name) const
{
    return root_ / std::to_string(pid) / name;
}

std::optional<ProcessFacts> ProcessTable::read(std::int32_t pid) const
{
    const auto stat = parseStat(readSmallFile(file(pid, "stat"), shortFile).value_or(""));
    if (pid < 1 || !stat) {
        return std::nullopt;
    }
    ProcessFacts facts{pid, stat->parent, stat->command, {}, {}, {}};
    std::error_code error;
    facts.executable = fs::read_symlink(file(pid, "exe"), error).string();
    // After an update the running program's file is gone.
    constexpr std::string_view deleted = " (deleted)";
    if (facts.executable.ends_with(deleted)) {
        facts.executable.resize(facts.executable.size() - deleted.size());
    }
    facts.arguments = splitAtZeros(readSmallFile(file(pid, "cmdline"), longFile).value_or(""));
    facts.unit = unitOfCgroups(readSmallFile(file(pid, "cgroup"), longFile).value_or(""));
    return facts;
}

std::optional<std::int32_t> ProcessTable::parent(std::int32_t pid) const
{
    const auto stat = parseStat(readSmallFile(file(pid, "stat"), shortFile).value_or(""));
    return stat && stat->parent > 0 ? std::optional(stat->parent) : std::nullopt;
}

std::optional<std::string> ProcessTable::flatpakID(std::int32_t pid) const
{
    const auto info = readSmallFile(file(pid, "root/.flatpak-info"), longFile);
    if (!info) {
        return std::nullopt;
    }
    bool isInGroup = false;
    std::string_view rest = *info;
    while (!rest.empty()) {
        const auto line = rest.substr(0, rest.find('\n'));
        rest.remove_prefix(std::min(line.size() + 1, rest.size()));
        if (line.starts_with('[')) {
            isInGroup = line == "[Application]";
        } else if (isInGroup && line.starts_with("name=") && line.size() > 5) {
            return std::string(line.substr(5));
        }
    }
    return std::nullopt;
}

std::optional<std::string> ProcessTable::launchedDesktopFile(std::int32_t pid) const
{
    return variable(pid, "GIO_LAUNCHED_DESKTOP_FILE_PID") == std::to_string(pid)
               ? variable(pid, "GIO_LAUNCHED_DESKTOP_FILE")
               : std::nullopt;
}

std::optional<std::string> ProcessTable::appImage(std::int32_t pid) const
{
    return variable(pid, "APPIMAGE");
}

std::optional<std::string> ProcessTable::variable(std::int32_t pid, std::string_view name) const
{
    const auto environment = readSmallFile(file(pid, "environ"), longFile);
    if (!environment) {
        return std::nullopt;
    }
    for (const auto& entry : splitAtZeros(*environment)) {
        if (entry.size() > name.size() + 1 && entry.starts_with(name) && entry[name.size()] == '=')
        {
            return entry.substr(name.size() + 1);
        }
    }
    return std::nullopt;
}

} // namespace fadewell
