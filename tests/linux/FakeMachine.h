#pragma once

#include "platform/linux/identity/AppIdentities.h"
#include "tests/linux/TemporaryFolder.h"

#include <map>
#include <string>
#include <vector>

namespace fadewell {

/// Processes and installed applications in a folder, for AppIdentities to look into.
class FakeMachine final {
public:
    struct Process {
        std::int32_t pid = 0;
        std::int32_t parent = 1;
        std::string executable = {}; ///< "/usr/…" and "/opt/…" are below the folder
        std::vector<std::string> arguments = {};
        std::string unit = "session-2.scope";
        std::string flatpak = {};
        std::map<std::string, std::string> environment = {};
    };

    void start(const Process& process) const
    {
        const std::string base = "proc/" + std::to_string(process.pid) + '/';
        const auto executable = local(process.executable);
        auto command = process.executable.substr(process.executable.find_last_of('/') + 1);
        command.resize(std::min<std::size_t>(command.size(), 15));
        folder.write(base + "stat",
                     std::to_string(process.pid) + " (" + command + ") S " +
                         std::to_string(process.parent) + " 1 1 0 -1\n");
        folder.write(base + "cgroup", "0::/user.slice/user@1000.service/app.slice/" + process.unit);
        folder.link(base + "exe", executable);
        std::string text = process.arguments.empty() ? executable + '\0' : "";
        for (const auto& argument : process.arguments) {
            text += local(argument) + '\0';
        }
        folder.write(base + "cmdline", text);
        text.clear();
        for (const auto& [name, value] : process.environment) {
            text += name + '=' + value + '\0';
        }
        folder.write(base + "environ", text);
        if (!process.flatpak.empty()) {
            folder.write(base + "root/.flatpak-info",
                         "[Instance]\nname=no\n[Application]\nname=" + process.flatpak + '\n');
        }
    }

    void install(const std::string& id, const std::string& lines) const
    {
        folder.write("usr/share/applications/" + id + ".desktop",
                     "[Desktop Entry]\nType=Application\n" + lines);
    }
    void program(const std::string& path) const { folder.write(path.substr(1), "#!"); }
    void link(const std::string& path, const std::string& target) const
    {
        folder.link(path.substr(1), local(target));
    }

    [[nodiscard]] AppIdentities::Config config() const
    {
        return {folder.path() / "proc",
                {{folder.path() / "usr/share"},
                 {folder.path() / "usr/bin"},
                 {folder.path() / "usr", folder.path() / "opt"},
                 {"de_DE", "de"}}};
    }

    /// A path of the machine as a path of the folder.
    [[nodiscard]] std::string local(const std::string& path) const
    {
        return path.starts_with("/usr/") || path.starts_with("/opt/")
                   ? folder.path().string() + path
                   : path;
    }

    TemporaryFolder folder;
};

} // namespace fadewell
