#include "platform/linux/doctor/SystemVersions.h"

#include "platform/linux/XdgPaths.h"

#include <array>
#include <climits>
#include <fmt/format.h>
#include <fstream>
#include <iterator>
#include <memory>
#include <pwd.h>
#include <sys/utsname.h>
#include <unistd.h>

namespace fadewell {
namespace {

std::string read(const char* path)
{
    std::ifstream file(path);
    return {std::istreambuf_iterator<char>(file), {}};
}

std::string distribution()
{
    for (const char* const path :
         {"/run/host/os-release", "/etc/os-release", "/usr/lib/os-release"}) {
        if (auto name = releaseValue(read(path), "PRETTY_NAME"); !name.empty()) {
            return name;
        }
    }
    return "unknown";
}

} // namespace

std::string releaseValue(std::string_view release, std::string_view key)
{
    while (!release.empty()) {
        const auto end = release.find('\n');
        auto line = release.substr(0, end);
        release.remove_prefix(end == std::string_view::npos ? release.size() : end + 1);
        if (line.starts_with(key) && line.substr(key.size()).starts_with('=')) {
            line.remove_prefix(key.size() + 1);
            const bool isQuoted = line.size() >= 2 && line.front() == line.back() &&
                                  (line.front() == '"' || line.front() == '\'');
            return std::string(isQuoted ? line.substr(1, line.size() - 2) : line);
        }
    }
    return {};
}

SystemInspection::Versions machineVersions()
{
    utsname kernel{};
    uname(&kernel); // Its only error is a bad address.
    return {{"Kernel", fmt::format("{} {} {}", kernel.sysname, kernel.release, kernel.machine)},
            {"Distribution", distribution()}};
}

SystemInspection::Owner machineOwner()
{
    SystemInspection::Owner owner;
    owner.home = XdgPaths::current().home.string();
    std::array<char, HOST_NAME_MAX + 1> host{};
    if (gethostname(host.data(), host.size() - 1) == 0) {
        owner.host = host.data();
    }
    std::array<char, 4096> memory{};
    passwd entry{};
    passwd* found = nullptr;
    if (getpwuid_r(geteuid(), &entry, memory.data(), memory.size(), &found) == 0 && found) {
        owner.user = found->pw_name;
        const std::string comment = found->pw_gecos == nullptr ? "" : found->pw_gecos;
        owner.fullName = comment.substr(0, comment.find(','));
    }
    return owner;
}

std::string loadedLibraryVersion(std::int32_t pid, std::string_view library)
{
    constexpr std::string_view beforeVersion = ".so.";
    std::ifstream maps(fmt::format("/proc/{}/maps", pid));
    for (std::string line; std::getline(maps, line);) {
        const auto name = line.rfind('/');
        const auto version = line.find(beforeVersion, name);
        // Its plug-ins begin alike and have no version.
        if (name != std::string::npos && version != std::string::npos &&
            line.substr(name + 1).starts_with(library))
        {
            return line.substr(version + beforeVersion.size());
        }
    }
    return {};
}

} // namespace fadewell
