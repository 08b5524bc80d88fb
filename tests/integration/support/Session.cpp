#include "tests/integration/support/Session.h"

#include "tests/integration/support/ChildProcess.h"

#include <array>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <memory>
#include <nlohmann/json.hpp>
#include <stdexcept>
#include <sys/wait.h>
#include <unistd.h>

namespace fadewell::integration {
namespace {

constexpr auto script = FADEWELL_SOURCE_DIR "/scripts/session.sh";

/// Takes over "KEY=VALUE" lines up to an empty one; false when the script ended before that.
bool takeOverEnvironment(int source)
{
    const std::unique_ptr<FILE, int (*)(FILE*)> lines(fdopen(source, "r"), &fclose);
    std::array<char, 4096> buffer{};
    while (fgets(buffer.data(), static_cast<int>(buffer.size()), lines.get())) {
        const std::string line(buffer.data());
        const auto equals = line.find('=');
        if (equals == std::string::npos) {
            return true;
        }
        setenv(line.substr(0, equals).c_str(),
               line.substr(equals + 1, line.size() - equals - 2).c_str(),
               1);
    }
    return false;
}

void forgetCallersSession()
{
    for (const auto* name : {"PIPEWIRE_REMOTE", "PIPEWIRE_RUNTIME_DIR", "PULSE_SERVER", "DISPLAY"})
    {
        unsetenv(name);
    }
}

} // namespace

Session::Session(const std::vector<std::string>& options)
{
    std::array<int, 2> input{};
    std::array<int, 2> output{};
    if (pipe2(input.data(), O_CLOEXEC) != 0 || pipe2(output.data(), O_CLOEXEC) != 0) {
        throw std::runtime_error("no pipe");
    }
    pid_ = fork();
    if (pid_ == 0) {
        dup2(input[0], STDIN_FILENO);
        dup2(output[1], STDOUT_FILENO);
        std::vector<std::string> command{script, "hold"};
        command.insert(command.end(), options.begin(), options.end());
        std::vector<char*> arguments;
        for (auto& argument : command) {
            arguments.push_back(argument.data());
        }
        arguments.push_back(nullptr);
        execv(arguments.front(), arguments.data());
        _exit(127);
    }
    close(input[0]);
    close(output[1]);
    keepAlive_ = input[1];
    forgetCallersSession();
    if (pid_ < 0 || !takeOverEnvironment(output[0])) {
        throw std::runtime_error("the private session did not come up");
    }
    folder_ = getenv("FADEWELL_SESSION");
}

Session::~Session()
{
    close(keepAlive_);
    waitpid(pid_, nullptr, 0);
}

std::vector<std::string> Session::nodesContaining(const std::string& part)
{
    std::vector<std::string> names;
    const auto objects = nlohmann::json::parse(runCommand({"pw-dump"}).output);
    for (const auto& object : objects) {
        const auto name = object.value("/info/props/node.name"_json_pointer, std::string());
        if (object.value("type", "") == "PipeWire:Interface:Node" &&
            name.find(part) != std::string::npos) {
            names.push_back(name);
        }
    }
    return names;
}

} // namespace fadewell::integration
