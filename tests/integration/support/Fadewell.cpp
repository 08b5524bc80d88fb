#include "tests/integration/support/Fadewell.h"

#include "tests/integration/support/Await.h"

#include <algorithm>
#include <csignal>
#include <fstream>
#include <stdexcept>

namespace fadewell::integration {

Fadewell::Fadewell(const std::string& variable, Windows windows)
    : process_({"env",
                variable,
                FADEWELL_PROGRAMS "/fadewell",
                windows == Windows::none ? "--headless" : "--background",
                "--verbose"})
{
    const auto answers = [this] {
        return control({"apps"}).code == 0 || !process_.isRunning();
    };
    if (!await(answers) || !process_.isRunning()) {
        throw std::runtime_error("Fadewell does not answer: " + log());
    }
}

std::optional<int> Fadewell::end(int signal)
{
    if (signal == SIGKILL) {
        process_.signal(SIGSTOP);
        kill(pid(), SIGKILL);
    }
    process_.signal(signal);
    return process_.wait();
}

pid_t Fadewell::pid() const
{
    const auto pid = std::to_string(process_.pid());
    std::ifstream children("/proc/" + pid + "/task/" + pid + "/children");
    pid_t child = 0;
    children >> child;
    return child;
}

CommandResult Fadewell::control(std::vector<std::string> arguments)
{
    arguments.insert(arguments.begin(), FADEWELL_PROGRAMS "/fadewellctl");
    return runCommand(std::move(arguments));
}

nlohmann::json Fadewell::apps()
{
    return nlohmann::json::parse(control({"apps", "--json"}).output);
}

std::string Fadewell::appOf(pid_t player)
{
    for (const auto& app : apps()) {
        const auto pids = app.at("pids").get<std::vector<pid_t>>();
        if (std::find(pids.begin(), pids.end(), player) != pids.end()) {
            return app.at("id");
        }
    }
    return {};
}

} // namespace fadewell::integration
