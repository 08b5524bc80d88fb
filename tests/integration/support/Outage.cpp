#include "tests/integration/support/Outage.h"

#include "tests/integration/support/Await.h"
#include "tests/integration/support/ChildProcess.h"
#include "tests/integration/support/Session.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <map>
#include <memory>
#include <stdexcept>
#include <thread>
#include <utility>
#include <vector>

namespace fadewell::integration {
namespace {

constexpr auto microphone = "microphone";

std::filesystem::path sessionFolder()
{
    return getenv("FADEWELL_SESSION");
}

pid_t pidOf(const std::string& name)
{
    pid_t pid = 0;
    std::ifstream(sessionFolder() / "pid" / name) >> pid;
    if (pid <= 0) {
        throw std::runtime_error("the session has no " + name);
    }
    return pid;
}

/// What was started here: kept, so that it lives until it is ended or the tests end.
std::map<std::string, std::unique_ptr<ChildProcess>>& started()
{
    static std::map<std::string, std::unique_ptr<ChildProcess>> programs;
    return programs;
}

/// Whether the devices are those of a session manager that has ended.
bool& haveDevicesLivedOn()
{
    static bool have = false;
    return have;
}

bool isRunning(const std::string& name)
{
    if (const auto found = started().find(name); found != started().end()) {
        static_cast<void>(found->second->isRunning()); // collects it when it has ended
    }
    std::ifstream stat("/proc/" + std::to_string(pidOf(name)) + "/stat");
    std::string text;
    std::getline(stat, text);
    const auto state = text.rfind(") ");
    return state != std::string::npos && text.at(state + 2) != 'Z';
}

bool succeeds(const std::vector<std::string>& command)
{
    return runTool(command).code == 0;
}

bool serverAnswers()
{
    return succeeds({"pw-cli", "info", "0"});
}

std::ptrdiff_t nodesNamed(const std::string& name)
{
    const auto names = Session::nodesContaining(name);
    return std::count(names.begin(), names.end(), name);
}

bool exists(const std::string& name)
{
    return nodesNamed(name) > 0;
}

/// Now and then pw-cli never ends, after its work or before.
void runUntil(const std::function<bool()>& isDone, const std::vector<std::string>& arguments)
{
    std::vector<std::string> command{"timeout", "2", "pw-cli"};
    command.insert(command.end(), arguments.begin(), arguments.end());
    bool done = isDone();
    for (int attempt = 0; attempt < 3 && !done; ++attempt) {
        (void)runCommand(command);
        done = await(isDone, std::chrono::seconds(2)); // A busy server takes its time.
    }
    if (!done) {
        throw std::runtime_error("no " + arguments.front() + " of " + arguments.back());
    }
}

void createNode(const std::string& name, const std::string& properties)
{
    runUntil([&] { return exists(name); },
             {"create-node",
              "adapter",
              "{ factory.name=support.null-audio-sink object.linger=true node.name=" + name + " " +
                  properties + " }"});
    if (nodesNamed(name) > 1) {
        throw std::runtime_error("a second " + name); // an attempt that came late
    }
}

void createOutput(const std::string& name, const std::string& description)
{
    // The session's own come first in their order.
    const int priority = name == speakers ? 2000 : name == headphones ? 1990 : 100;
    createNode(name,
               "node.description=\"" + description +
                   "\" media.class=Audio/Sink audio.position=[FL FR] monitor.channel-volumes=true "
                   "priority.session=" +
                   std::to_string(priority));
}

/// Those that the configuration of scripts/session.sh makes, anew and one by one: a session manager
/// of the version tested never links to one that its predecessor knew, and the Pulse server makes
/// an output of its own when there is none at all.
void replaceDevices()
{
    for (const auto* device : {speakers, headphones, microphone}) {
        removeOutput(device);
        addMissingDevices();
    }
}

/// Until it is awake: a device that is made while it starts is none to it either.
void awaitSessionManager()
{
    const auto isThere = [] {
        return runTool({"pw-metadata", "0"}).output.find("Found") != std::string::npos;
    };
    if (!await(isThere)) {
        throw std::runtime_error("the session manager is not back");
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(300));
}

} // namespace

void addMissingDevices()
{
    if (!exists(speakers)) {
        createOutput(speakers, "Speakers");
    }
    if (!exists(headphones)) {
        createOutput(headphones, "Headphones");
    }
    if (!exists(microphone)) {
        createNode(microphone,
                   "node.description=\"Built-in Microphone\" media.class=Audio/Source/Virtual "
                   "audio.position=[MONO] priority.session=2000");
    }
}

void signalProgram(const std::string& name, int number)
{
    kill(pidOf(name), number);
}

void endProgram(const std::string& name, int signal)
{
    if (!isRunning(name)) {
        return;
    }
    signalProgram(name, signal);
    if (!await([&] { return !isRunning(name); })) {
        throw std::runtime_error(name + " does not end");
    }
    started().erase(name);
    if (name == sessionManager) {
        haveDevicesLivedOn() = isRunning(soundServer);
    } else if (name == soundServer) {
        haveDevicesLivedOn() = false;
    }
}

void startProgram(const std::string& name)
{
    const auto folder = sessionFolder();
    auto program = std::make_unique<ChildProcess>(std::vector<std::string>{
        "env",
        "DBUS_SYSTEM_BUS_ADDRESS=unix:path=" + (folder / "run" / "no-system-bus").string(),
        "sh",
        "-c",
        R"(exec "$0" >>"$1" 2>&1)",
        name,
        (folder / "log" / (name + ".log")).string()});
    std::ofstream(folder / "pid" / name) << program->pid() << '\n';
    started()[name] = std::move(program);
    if (name == soundServer && !await(serverAnswers)) {
        throw std::runtime_error("the server is not back");
    }
    if (name == sessionManager && std::exchange(haveDevicesLivedOn(), false)) {
        awaitSessionManager();
        replaceDevices();
    }
}

void awaitSession()
{
    const auto hasDefault = [] {
        const auto values = runTool({"pw-metadata", "0"}).output;
        return values.find("'default.audio.sink'") != std::string::npos;
    };
    const auto pulseAnswers = [] {
        return succeeds({"timeout", "2", "pactl", "info"});
    };
    if (!await(serverAnswers) || !await(hasDefault) || !await(pulseAnswers)) {
        throw std::runtime_error("the session is not back");
    }
}

void addOutput(const std::string& name, const std::string& description)
{
    createOutput(name, description);
}

void removeOutput(const std::string& name)
{
    runUntil([&] { return !exists(name); }, {"destroy", name});
}

void chooseDefaultOutput(const std::string& name)
{
    constexpr auto key = "default.configured.audio.sink";
    if (!succeeds({"pw-metadata", "0", key, "{\"name\":\"" + name + "\"}", "Spa:String:JSON"})) {
        throw std::runtime_error("no choice of " + name);
    }
}

} // namespace fadewell::integration
