#include "tests/bench/PathApps.h"
#include "tests/bench/PathBench.h"
#include "tests/bench/ProcessMeter.h"
#include "tests/integration/support/Await.h"
#include "tests/integration/support/CountedSound.h"
#include "tests/integration/support/Fadewell.h"
#include "tests/integration/support/Recorder.h"
#include "tests/integration/support/Session.h"

#include <fmt/format.h>
#include <fstream>
#include <optional>
#include <stdexcept>
#include <thread>

namespace fadewell::integration {
namespace {

using namespace std::chrono_literals;

enum class Path {
    direct,
    loopback, ///< each app through a loopback of the server's own
    tapped
};

constexpr auto settling = 1s;
constexpr auto interval = 6s;

pid_t serverOf(const std::filesystem::path& folder)
{
    pid_t pid = 0;
    std::ifstream(folder / "pid" / "pipewire") >> pid;
    return pid;
}

/// Apps that play for as long as this lives.
class Load {
public:
    Load(const std::filesystem::path& folder, int apps, Path path)
    {
        if (path == Path::tapped) {
            fadewell_.emplace();
        }
        for (int i = 0; i < apps; ++i) {
            const auto number = std::to_string(i);
            const auto loop = path == Path::loopback ? "loop-" + number : std::string();
            if (path == Path::loopback) {
                loopbacks_.push_back(startLoopback(loop));
            }
            apps_.push_back(
                startApp(folder, "app-" + number, "native", folder / "load.wav", "loop", loop));
        }
        for (std::size_t i = 0; i < apps_.size(); ++i) {
            if (path == Path::tapped) {
                controlFadewell({"volume", awaitApp(apps_[i].pid()), "50%"});
            }
            const auto name = "app-" + std::to_string(i);
            if (!await([&] { return isLinked(name, path); })) {
                throw std::runtime_error(name + " does not play as it should");
            }
        }
        std::this_thread::sleep_for(settling);
    }
    Load(const Load&) = delete;
    Load& operator=(const Load&) = delete;

    /// Ends the apps and returns when the server is done with them.
    void end()
    {
        if (fadewell_) {
            // What is remembered would be applied to the next load's apps.
            controlFadewell({"forget", "--all"});
        }
        apps_.clear();
        const auto isOver = [] {
            return runCommand({"pw-link", "--output"}).output.find("app-") == std::string::npos;
        };
        if (!await(isOver)) {
            throw std::runtime_error("apps that have ended are still there");
        }
    }

    /// The processes that the sound goes through besides the server.
    [[nodiscard]] std::vector<pid_t> between() const
    {
        std::vector<pid_t> processes;
        for (const auto& loopback : loopbacks_) {
            processes.push_back(loopback.pid());
        }
        if (fadewell_) {
            const auto own = fadewell_->processes();
            processes.insert(processes.end(), own.begin(), own.end());
        }
        return processes;
    }

private:
    static bool isLinked(const std::string& name, Path path)
    {
        const bool hasLink =
            runCommand({"pw-link", "--links"}).output.find(name + ":output_FL\n  |-> ") !=
            std::string::npos;
        return hasLink && isDirect(name, speakers) == (path == Path::direct);
    }

    std::optional<Fadewell> fadewell_;
    std::vector<ChildProcess> loopbacks_;
    std::vector<ChildProcess> apps_;
};

struct Cost {
    double client = 0; ///< of a core, in percent
    double server = 0;
    std::size_t gaps = 0; ///< cycles that weren't done in time
};

Cost costOf(const std::filesystem::path& folder, int apps, Path path)
{
    const Recorder recorder(speakers);
    Load load(folder, apps, path);
    const auto gaps = recorder.gaps();
    Cost cost;
    const auto usages = measureUsage({load.between(), {serverOf(folder)}}, interval);
    cost.client = usages[0].cpu;
    cost.server = usages[1].cpu;
    cost.gaps = recorder.gaps() - gaps;
    load.end();
    return cost;
}

std::string perApp(const Cost& cost, const Cost& direct, int apps)
{
    return fmt::format("client {:.2f} % + server {:.2f} % of a core",
                       cost.client / apps,
                       (cost.server - direct.server) / apps);
}

} // namespace

void measureLoad(PathTable& table, const std::filesystem::path& folder)
{
    CountedSound(48'000).write(folder / "load.wav");
    for (const int apps : {1, 8, 32, 64}) {
        const auto direct = costOf(folder, apps, Path::direct);
        const auto tapped = costOf(folder, apps, Path::tapped);
        if (apps <= 8) {
            const auto loopback = costOf(folder, apps, Path::loopback);
            constexpr double noise = 1.1;
            table.row(fmt::format("  pw-loopback, each of {}", apps),
                      perApp(loopback, direct, apps));
            table.row(fmt::format("each of {} tapped apps", apps),
                      perApp(tapped, direct, apps),
                      "not above pw-loopback",
                      tapped.client + tapped.server <= noise * (loopback.client + loopback.server));
        }
        table.row(fmt::format("{} tapped apps at once", apps),
                  fmt::format(
                      "{} xruns in {} s, {} untapped", tapped.gaps, interval.count(), direct.gaps),
                  "not above untapped",
                  tapped.gaps <= direct.gaps);
    }
}

} // namespace fadewell::integration
