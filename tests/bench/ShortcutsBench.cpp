// How long after a key is pressed the volume changes at the output.

#include "tests/bench/LevelChange.h"
#include "tests/integration/keyboard/ShortcutDesk.h"
#include "tests/integration/support/Await.h"
#include "tests/integration/support/Player.h"
#include "tests/integration/support/Recorder.h"
#include "tests/integration/support/Session.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>
#include <stdexcept>

namespace fadewell::integration {
namespace {

using namespace std::chrono_literals;
using Key = ShortcutDesk::Key;

/// The number of presses that changed nothing, or whose recording has gaps.
std::size_t run(const std::string& quantum, std::size_t count)
{
    const Session session({"--quantum", quantum});
    const auto content = session.folder() / "constant.wav";
    writeFrames(content, std::vector<Frame>(60 * 48000, Frame{0.25F, 0.25F}));
    ShortcutDesk desk;
    const auto player = play("pw-play", content);
    const Recorder recorder(speakers);
    if (!await([&] { return !Fadewell::appOf(player.pid()).empty(); })) {
        throw std::runtime_error("Fadewell does not list the player.");
    }
    desk.bringToFront(player.pid());
    const auto measure = [&](Key key) {
        return LevelChange::measure(recorder, [&] { desk.strike(key); });
    };
    static_cast<void>(measure(Key::lower)); // The first touch taps the app.
    std::vector<double> begins;
    std::vector<double> ends;
    for (std::size_t press = 0; press < count; ++press) {
        spreadOverCycle();
        if (const auto change = measure(press % 2 == 0 ? Key::lower : Key::raise)) {
            begins.push_back(change->begin);
            ends.push_back(change->end);
        }
    }
    if (begins.empty()) {
        throw std::runtime_error("No press changed anything: " + desk.fadewell().log());
    }
    fmt::print("{:>7} {:>7}   {}   {}\n", quantum, begins.size(), spread(begins), spread(ends));
    return count - begins.size();
}

int run(int argc, char** argv)
{
    std::vector<std::string> quanta{"256", "1024"};
    std::size_t count = 50;
    CLI::App app("How long after a key is pressed the volume changes.", "shortcuts_bench");
    app.add_option("--quantum", quanta, "frames in a cycle");
    app.add_option("--count", count, "presses for each")->check(CLI::Range(1, 100));
    CLI11_PARSE(app, argc, argv);
    fmt::print("milliseconds from the cycle before the press; least, median, most\n"
               "{:>7} {:>7}   {:<20}   {:<20}\n",
               "quantum",
               "presses",
               "change begins",
               "has settled");
    std::size_t lost = 0;
    for (const auto& quantum : quanta) {
        lost += run(quantum, count);
    }
    fmt::print("{} not measured\n", lost);
    return 0;
}

} // namespace
} // namespace fadewell::integration

int main(int argc, char** argv)
try {
    return fadewell::integration::run(argc, argv);
} catch (const std::exception& error) {
    fmt::print(stderr, "shortcuts_bench: {}\n", error.what());
    return 1;
}
