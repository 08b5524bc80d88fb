#include "platform/linux/XdgPaths.h"

#include <algorithm>
#include <cstdlib>
#include <pwd.h>
#include <string_view>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace fadewell {
namespace fs = std::filesystem;
namespace {

std::optional<fs::path> absolutePath(const XdgPaths::Environment& environment, const char* name)
{
    const auto value = environment(name);
    if (!value || value->empty() || value->front() != '/') {
        return std::nullopt;
    }
    return fs::path(*value);
}

fs::path homeFolder(const XdgPaths::Environment& environment)
{
    if (const auto home = absolutePath(environment, "HOME")) {
        return *home;
    }
    passwd entry{};
    passwd* found = nullptr;
    char buffer[4096];
    if (getpwuid_r(getuid(), &entry, buffer, sizeof buffer, &found) == 0 && found != nullptr) {
        return found->pw_dir;
    }
    return "/";
}

fs::path runtimeFolder(const XdgPaths::Environment& environment)
{
    if (const auto folder = absolutePath(environment, "XDG_RUNTIME_DIR")) {
        return *folder;
    }
    const std::string user = std::to_string(getuid());
    const fs::path login = fs::path("/run/user") / user;
    std::error_code error;
    return fs::is_directory(login, error) ? login : fs::path("/tmp") / ("fadewell-runtime-" + user);
}

std::vector<fs::path> dataFolders(const XdgPaths::Environment& environment,
                                  const fs::path& dataHome)
{
    std::vector<fs::path> folders{dataHome};
    const auto add = [&folders](const fs::path& folder) {
        if (folder.is_absolute() &&
            std::find(folders.begin(), folders.end(), folder) == folders.end()) {
            folders.push_back(folder);
        }
    };
    auto listed = environment("XDG_DATA_DIRS").value_or("");
    if (listed.empty()) {
        listed = "/usr/local/share:/usr/share";
    }
    for (std::size_t start = 0; start <= listed.size();) {
        const std::size_t end = std::min(listed.find(':', start), listed.size());
        add(fs::path(listed.substr(start, end - start)).lexically_normal());
        start = end + 1;
    }
    add(dataHome / "flatpak/exports/share");
    add("/var/lib/flatpak/exports/share");
    add("/var/lib/snapd/desktop");
    return folders;
}

} // namespace

XdgPaths XdgPaths::fromEnvironment(const Environment& environment)
{
    XdgPaths paths;
    paths.home = homeFolder(environment);
    const auto below = [&](const char* name, const char* fallback) {
        return absolutePath(environment, name).value_or(paths.home / fallback);
    };
    paths.configHome = below("XDG_CONFIG_HOME", ".config");
    paths.stateHome = below("XDG_STATE_HOME", ".local/state");
    paths.dataHome = below("XDG_DATA_HOME", ".local/share");
    paths.runtimeDir = runtimeFolder(environment);
    paths.dataDirs = dataFolders(environment, paths.dataHome);
    return paths;
}

XdgPaths XdgPaths::current()
{
    return fromEnvironment([](const char* name) -> std::optional<std::string> {
        const char* value = std::getenv(name);
        return value == nullptr ? std::nullopt : std::optional<std::string>(value);
    });
}

fs::path XdgPaths::settingsFile() const
{
    return configHome / "fadewell" / "settings.json";
}

fs::path XdgPaths::ownStateFolder() const
{
    return stateHome / "fadewell";
}

fs::path XdgPaths::ownRuntimeFolder() const
{
    return runtimeDir / "fadewell";
}

bool makePrivateFolder(const fs::path& folder)
{
    std::error_code error;
    if (fs::is_directory(folder, error)) {
        return true;
    }
    if (folder.has_parent_path() && folder.parent_path() != folder &&
        !makePrivateFolder(folder.parent_path()))
    {
        return false;
    }
    // Another process may have made it meanwhile.
    return mkdir(folder.c_str(), 0700) == 0 || fs::is_directory(folder, error);
}

} // namespace fadewell
