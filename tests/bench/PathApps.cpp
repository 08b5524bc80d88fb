#include "tests/bench/PathApps.h"

#include "tests/integration/support/Await.h"
#include "tests/integration/support/Fadewell.h"
#include "tests/integration/support/Session.h"

#include <stdexcept>

namespace fadewell::integration {

ChildProcess startApp(const std::filesystem::path& folder,
                      const std::string& name,
                      const std::string& protocol,
                      const std::filesystem::path& sound,
                      const std::string& mode,
                      const std::string& output)
{
    // An app is told by its program's file.
    const auto program = folder / name;
    if (!std::filesystem::exists(program)) {
        std::filesystem::copy_file(FADEWELL_PROGRAMS "/sound_client", program);
    }
    std::vector<std::string> command{"env"};
    if (!output.empty()) {
        command.push_back("PIPEWIRE_NODE=" + output);
        command.push_back("PULSE_SINK=" + output);
    }
    command.insert(command.end(), {program, protocol, sound, mode});
    return ChildProcess(std::move(command));
}

ChildProcess startLoopback(const std::string& name)
{
    ChildProcess loopback(
        {"pw-loopback",
         "--capture-props=media.class=Audio/Sink priority.session=1 node.name=" + name,
         std::string("--playback=") + speakers,
         "--playback-props=node.passive=true node.name=" + name + "-out"});
    if (!await([&] { return Session::nodesContaining(name + "-out").size() == 1; })) {
        throw std::runtime_error("pw-loopback failed: " + loopback.errors());
    }
    return loopback;
}

bool isDirect(const std::string& name, const std::string& output)
{
    const auto links = runCommand({"pw-link", "--links"}).output;
    const auto link = name + ":output_FL\n  |-> " + output + ":playback_FL\n";
    return links.find(link) != std::string::npos;
}

void controlFadewell(std::vector<std::string> arguments)
{
    const auto result = Fadewell::control(std::move(arguments));
    if (result.code != 0) {
        throw std::runtime_error("fadewellctl: " + result.output + result.errors);
    }
}

std::string awaitApp(pid_t process)
{
    std::string app;
    if (!await([&] { return !(app = Fadewell::appOf(process)).empty(); })) {
        throw std::runtime_error("an app is not listed");
    }
    return app;
}

} // namespace fadewell::integration
