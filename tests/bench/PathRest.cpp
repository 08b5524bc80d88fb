#include "tests/bench/PathApps.h"
#include "tests/bench/PathBench.h"
#include "tests/bench/ProcessMeter.h"
#include "tests/integration/support/Await.h"
#include "tests/integration/support/CountedSound.h"
#include "tests/integration/support/Fadewell.h"

#include <fmt/format.h>
#include <memory>
#include <optional>
#include <thread>

namespace fadewell::integration {
namespace {

using namespace std::chrono_literals;

constexpr auto settling = 3s;
constexpr auto interval = 8s;

/// The desktop's usual mixer on a screen of its own; absent when it isn't installed.
class OtherMixer {
public:
    OtherMixer()
    {
        screen_.emplace(
            std::vector<std::string>{"Xvfb", "-displayfd", "1", "-nolisten", "tcp", "-noreset"});
        if (!await([&] { return !screen_->output().empty() || !screen_->isRunning(); }) ||
            !screen_->isRunning())
        {
            return;
        }
        const auto number = screen_->output();
        mixer_.emplace(std::vector<std::string>{
            "env", "DISPLAY=:" + number.substr(0, number.find('\n')), "pavucontrol"});
        std::this_thread::sleep_for(settling);
    }

    [[nodiscard]] bool isThere() { return mixer_ && mixer_->isRunning(); }
    [[nodiscard]] pid_t pid() const { return mixer_->pid(); }

private:
    std::optional<ChildProcess> screen_;
    std::optional<ChildProcess> mixer_;
};

Usage usageOf(const std::vector<pid_t>& processes)
{
    return measureUsage({processes}, interval).front();
}

std::string text(const Usage& usage, pid_t process)
{
    return fmt::format("{:.1f} (audio {:.0f}) wake-ups/s, {:.2f} %, {:.1f} MB",
                       usage.wakeups,
                       usage.audioWakeups,
                       usage.cpu,
                       residentMemory(process));
}

void measurePlaying(PathTable& table, const std::filesystem::path& folder, const Fadewell& fadewell)
{
    std::vector<ChildProcess> apps;
    for (const std::string name : {"rest-1", "rest-2", "rest-3"}) {
        apps.push_back(startApp(folder, name, "native", folder / "rest.wav", "loop", ""));
        static_cast<void>(awaitApp(apps.back().pid()));
    }
    std::this_thread::sleep_for(settling);
    table.row("  three apps playing untapped", text(usageOf(fadewell.processes()), fadewell.pid()));
    for (const auto& app : apps) {
        controlFadewell({"volume", awaitApp(app.pid()), "50%"});
    }
    std::this_thread::sleep_for(settling);
    const auto usage = usageOf(fadewell.processes());
    table.row("three tapped apps playing",
              text(usage, fadewell.pid()),
              "< 20 wake-ups/s, < 1 %",
              usage.wakeups < 20 && usage.cpu < 1);
    OtherMixer mixer;
    table.row("  pavucontrol with them",
              mixer.isThere() ? text(usageOf({mixer.pid()}), mixer.pid())
                              : "not installed (pavucontrol, Xvfb)");
}

} // namespace

void measureRest(PathTable& table, const std::filesystem::path& folder)
{
    CountedSound(20 * 48'000).write(folder / "rest.wav");
    const Fadewell fadewell;
    std::this_thread::sleep_for(settling);
    const auto usage = usageOf(fadewell.processes());
    table.row("nothing playing",
              text(usage, fadewell.pid()),
              "no wake-up, < 25 MB",
              usage.wakeups + usage.audioWakeups == 0 && residentMemory(fadewell.pid()) < 25);
    measurePlaying(table, folder, fadewell);
    controlFadewell({"forget", "--all"});
}

} // namespace fadewell::integration
