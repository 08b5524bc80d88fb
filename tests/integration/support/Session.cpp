#include "tests/integration/support/Session.h"

#include "tests/integration/support/Await.h"

#include <cstdlib>
#include <sstream>
#include <stdexcept>

namespace fadewell::integration {
namespace {

constexpr auto patience = std::chrono::seconds(25);

std::vector<std::string> hold(const std::vector<std::string>& options)
{
    std::vector<std::string> command{FADEWELL_SOURCE_DIR "/scripts/session.sh", "hold"};
    command.insert(command.end(), options.begin(), options.end());
    return command;
}

} // namespace

Session::Session(const std::vector<std::string>& options)
    : script_(hold(options), true)
{
    const auto isUp = [this] {
        return script_.output().ends_with("\n\n") || !script_.isRunning();
    };
    if (!await(isUp, patience) || !script_.isRunning()) {
        throw std::runtime_error("the private session did not come up: " + script_.errors());
    }
    for (const auto* name : {"PIPEWIRE_REMOTE", "PIPEWIRE_RUNTIME_DIR", "PULSE_SERVER", "DISPLAY"})
    {
        unsetenv(name); // the caller's
    }
    std::istringstream lines(script_.output());
    for (std::string name, value; std::getline(lines, name, '=') && std::getline(lines, value);) {
        setenv(name.c_str(), value.c_str(), 1);
    }
    folder_ = getenv("FADEWELL_SESSION");
}

Session::~Session()
{
    // A shell whose children were killed by others may wait for ever; its janitor doesn't need it.
    script_.endInput();
    static_cast<void>(script_.wait(patience));
}

nlohmann::json Session::objects()
{
    // pw-dump waits for ever for an object that goes while it looks.
    for (int attempt = 0; attempt < 5; ++attempt) {
        if (const auto dump = runCommand({"timeout", "1", "pw-dump"}); dump.code == 0) {
            // What changes meanwhile follows as further lists.
            std::istringstream lists(dump.output);
            nlohmann::json first;
            lists >> first;
            return first;
        }
    }
    throw std::runtime_error("the sound server lists nothing");
}

std::vector<std::string> Session::nodesContaining(const std::string& part)
{
    std::vector<std::string> names;
    for (const auto& object : objects()) {
        const auto name = object.value("/info/props/node.name"_json_pointer, std::string());
        if (object.value("type", "") == "PipeWire:Interface:Node" &&
            name.find(part) != std::string::npos) {
            names.push_back(name);
        }
    }
    return names;
}

} // namespace fadewell::integration
