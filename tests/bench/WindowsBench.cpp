// How soon the icon and the panel are there, how soon the slider is heard, and what both keep of
// the machine, beside the desktop's usual mixer.

#include "tests/bench/LevelChange.h"
#include "tests/bench/PathTable.h"
#include "tests/bench/ProcessMeter.h"
#include "tests/bench/TrayDesktop.h"
#include "tests/integration/support/Await.h"
#include "tests/integration/support/Fadewell.h"
#include "tests/integration/support/Player.h"
#include "tests/integration/support/Session.h"

#include <QCoreApplication>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstdlib>
#include <fmt/format.h>
#include <fstream>
#include <stdexcept>
#include <thread>

namespace fadewell::integration {
namespace {

using namespace std::chrono_literals;

constexpr auto settling = 1500ms;
constexpr auto interval = 10s;
constexpr const char* otherMixer = "pavucontrol";

/// The introduction would open with the first start.
void writeSettings()
{
    const auto folder = std::filesystem::path(std::getenv("XDG_CONFIG_HOME")) / "fadewell";
    std::filesystem::create_directories(folder);
    std::ofstream(folder / "settings.json")
        << R"({"hasCompletedOnboarding": {"type": "boolean", "value": true}})";
}

/// What was measured again and again.
class Costs {
public:
    void add(const Cost& cost)
    {
        walls_.push_back(cost.wall);
        processor_.push_back(cost.processor);
    }
    [[nodiscard]] double wall() const { return median(walls_); }
    [[nodiscard]] std::string text() const
    {
        return fmt::format("{} ms, processor {:.0f} ms", spread(walls_), median(processor_));
    }

private:
    std::vector<double> walls_;
    std::vector<double> processor_;
};

struct Memory {
    std::vector<double> resident; ///< of the process that has the windows
    std::vector<double> proportional;

    void add(const std::vector<pid_t>& processes)
    {
        resident.push_back(residentMemory(processes.front()));
        proportional.push_back(proportionalMemory(processes));
    }
    [[nodiscard]] std::string text() const
    {
        return fmt::format("{} MB, shared {:.1f} MB", spread(resident), median(proportional));
    }
};

struct Starts {
    Costs icon;
    Costs firstOpening;
    Costs opening;
    Costs other;
    Memory before;
    Memory open;
    Memory otherMemory;
};

Starts measureStarts(TrayDesktop& desktop, std::size_t count)
{
    Starts starts;
    for (std::size_t start = 0; start < count; ++start) {
        starts.icon.add(desktop.startFadewell());
        std::this_thread::sleep_for(settling);
        if (Fadewell::apps().size() != std::size(players)) {
            throw std::runtime_error("The panel would not have a row for each player.");
        }
        starts.before.add(desktop.fadewell());
        starts.firstOpening.add(desktop.openPanel());
        std::this_thread::sleep_for(settling);
        desktop.closePanel();
        std::this_thread::sleep_for(settling);
        starts.opening.add(desktop.openPanel());
        std::this_thread::sleep_for(settling);
        starts.open.add(desktop.fadewell());
        desktop.closePanel();
        desktop.endFadewell();
        starts.other.add(desktop.startOther(otherMixer));
        std::this_thread::sleep_for(settling);
        starts.otherMemory.add({desktop.other()});
        desktop.endOther();
    }
    return starts;
}

void measureStarts(PathTable& table, std::size_t count)
{
    const Session session;
    writeSettings();
    TrayDesktop desktop;
    const auto tone = session.folder() / "tone.wav";
    writeTone(tone);
    std::vector<ChildProcess> apps;
    for (const auto* player : players) {
        apps.push_back(play(player, tone));
    }
    const auto starts = measureStarts(desktop, count);
    table.row("start to icon", starts.icon.text(), "< 300 ms", starts.icon.wall() < 300);
    table.row("  first opening of the panel", starts.firstOpening.text());
    table.row("click to panel", starts.opening.text(), "< 150 ms", starts.opening.wall() < 150);
    table.row("  pavucontrol, start to window", starts.other.text());
    table.row("memory before the first opening",
              starts.before.text(),
              "< 40 MB",
              median(starts.before.resident) < 40);
    table.row("memory with the panel open",
              starts.open.text(),
              "< 60 MB",
              median(starts.open.resident) < 60);
    table.row("  pavucontrol", starts.otherMemory.text());
}

/// With nothing playing; both at the same time.
void measureRest(PathTable& table, std::size_t count)
{
    const Session session;
    writeSettings();
    TrayDesktop desktop;
    static_cast<void>(desktop.startFadewell());
    std::this_thread::sleep_for(settling);
    static_cast<void>(desktop.openPanel());
    std::this_thread::sleep_for(settling);
    desktop.closePanel();
    static_cast<void>(desktop.startOther(otherMixer));
    std::this_thread::sleep_for(2 * settling);
    std::vector<double> own;
    std::vector<double> other;
    for (std::size_t turn = 0; turn < count; ++turn) {
        const auto usages = measureUsage({desktop.fadewell(), {desktop.other()}}, interval);
        const auto total = [](const Usage& usage) {
            return std::chrono::duration<double>(interval).count() *
                   (usage.wakeups + usage.audioWakeups);
        };
        own.push_back(total(usages[0]));
        other.push_back(total(usages[1]));
    }
    table.row("wake-ups in 10 s, panel closed", spread(own), "none", median(own) < 0.5);
    table.row("  pavucontrol, its window open", spread(other));
    desktop.endOther();
    desktop.endFadewell();
}

/// The slider of the only row, moved by the arrow keys.
class SliderKeys {
public:
    explicit SliderKeys(XServer& keyboard)
        : keyboard_(keyboard)
    {
        constexpr int tab = 23;
        for (int stop = 0; stop < 4; ++stop) { // menu, output, mute, slider
            keyboard_.strike({tab});
            std::this_thread::sleep_for(100ms);
        }
    }
    void move()
    {
        constexpr int left = 113;
        constexpr int right = 114;
        isLower_ = !isLower_;
        keyboard_.strike({isLower_ ? left : right});
    }

private:
    XServer& keyboard_;
    bool isLower_ = false;
};

void measureSlider(PathTable& table, const std::string& quantum, std::size_t count)
{
    const Session session({"--quantum", quantum});
    writeSettings();
    TrayDesktop desktop;
    const auto content = session.folder() / "constant.wav";
    writeFrames(content, std::vector<Frame>(100 * 48000, Frame{0.25F, 0.25F}));
    const auto player = play("pw-play", content);
    const Recorder recorder(speakers);
    static_cast<void>(desktop.startFadewell());
    if (!await([&] { return !Fadewell::appOf(player.pid()).empty(); })) {
        throw std::runtime_error("Fadewell does not list the player.");
    }
    static_cast<void>(desktop.openPanel());
    std::this_thread::sleep_for(settling);
    SliderKeys slider(desktop.server());
    static_cast<void>(LevelChange::measure(recorder, [&] { slider.move(); })); // It is tapped.
    std::this_thread::sleep_for(settling);
    std::vector<double> begins;
    std::vector<double> ends;
    for (std::size_t move = 0; move < count; ++move) {
        spreadOverCycle();
        if (const auto change = LevelChange::measure(recorder, [&] { slider.move(); })) {
            begins.push_back(change->begin);
            ends.push_back(change->end - change->begin);
        }
    }
    if (begins.size() < (count + 1) / 2) {
        throw std::runtime_error("The slider was hardly heard.");
    }
    const double cycle = std::stod(quantum) * 1000 / sampleRate;
    table.row(fmt::format("slider to level begins, quantum {}", quantum),
              spread(begins) + " ms",
              fmt::format("the next cycle, < {:.1f} ms", 2 * cycle),
              median(begins) < 2 * cycle);
    table.row("  the ramp then takes", spread(ends) + " ms");
    desktop.closePanel();
    desktop.endFadewell();
}

std::string load()
{
    double averages[1] = {0};
    return getloadavg(averages, 1) == 1 ? fmt::format("{:.1f}", averages[0]) : "unknown";
}

int run(int argc, char** argv)
{
    std::vector<std::string> parts{"starts", "rest", "slider"};
    std::vector<std::string> quanta{"256", "1024"};
    std::size_t count = 10;
    CLI::App app("How soon Fadewell's icon, panel and slider are there.", "windows_bench");
    app.add_option("--part", parts, "starts, rest, slider")->check(CLI::IsMember(parts));
    app.add_option("--quantum", quanta, "frames in a cycle, for the slider");
    app.add_option("--count", count, "of each measurement")
        ->check(CLI::Range(1, 12)); // The sounds end.
    CLI11_PARSE(app, argc, argv);
    const QCoreApplication application(argc, argv);
    fmt::print("least, median, most of {}; load of the machine {}\n", count, load());
    PathTable table;
    for (const auto& part : parts) {
        if (part == "starts") {
            measureStarts(table, count);
        } else if (part == "rest") {
            measureRest(table, count);
        } else {
            for (const auto& quantum : quanta) {
                measureSlider(table, quantum, count);
            }
        }
    }
    fmt::print("{} failed; load of the machine {}\n", table.failed(), load());
    return table.failed() == 0 ? 0 : 1;
}

} // namespace
} // namespace fadewell::integration

int main(int argc, char** argv)
try {
    return fadewell::integration::run(argc, argv);
} catch (const std::exception& error) {
    fmt::print(stderr, "windows_bench: {}\n", error.what());
    return 1;
}
