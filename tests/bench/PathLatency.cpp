#include "tests/bench/PathApps.h"
#include "tests/bench/PathBench.h"
#include "tests/integration/support/Await.h"
#include "tests/integration/support/CountedSound.h"
#include "tests/integration/support/Fadewell.h"
#include "tests/integration/support/Recorder.h"
#include "tests/integration/support/Session.h"

#include <fmt/format.h>
#include <optional>

namespace fadewell::integration {
namespace {

using namespace std::chrono_literals;

/// How far the frames that are played lie behind those of the recording, as soon as that stays the
/// same and the gain is right; empty when it never does.
std::optional<std::size_t>
distanceOn(const Recorder& recorder, const CountedSound& content, double gain)
{
    std::optional<std::size_t> distance;
    const auto isSteady = [&] {
        const auto begin = recorder.now();
        const auto sound = recorder.read(begin, frames(200ms));
        const auto check = content.check(sound, gain);
        distance = (begin + check.first + content.frames() - check.head) % content.frames();
        return check.isHeard && check.first == 0 && check.wrong + check.inside + check.zeros == 0;
    };
    return await(isSteady) ? distance : std::nullopt;
}

struct Latencies {
    std::size_t tapped = 0;
    std::size_t loopback = 0;
};

/// Plays by the output's clock three times: untapped, tapped, and through a loopback. Empty when
/// the recording has gaps.
std::optional<Latencies> measureOnce(const CountedSound& content,
                                     const std::filesystem::path& folder)
{
    const Recorder recorder(speakers);
    const Fadewell fadewell;
    const auto play = [&](const char* name, const std::string& output) {
        return startApp(folder, name, "native", folder / "clock.wav", "clock", output);
    };
    std::optional<std::size_t> untapped;
    std::optional<std::size_t> tapped;
    {
        const auto client = play("clock", "");
        const auto app = awaitApp(client.pid());
        untapped = distanceOn(recorder, content, 1);
        controlFadewell({"volume", app, "50%"});
        tapped = distanceOn(recorder, content, 0.5);
        controlFadewell({"forget", app});
    }
    const auto loopback = startLoopback("loop");
    const auto client = play("clock-loop", "loop");
    const auto looped = distanceOn(recorder, content, 1);
    if (!untapped || !tapped || !looped || recorder.gaps() > 0) {
        return std::nullopt;
    }
    const auto beyond = [&](std::size_t distance) {
        return (distance + content.frames() - *untapped) % content.frames();
    };
    return Latencies{beyond(*tapped), beyond(*looped)};
}

} // namespace

void measureLatency(PathTable& table, const std::filesystem::path& folder)
{
    const CountedSound content(20 * 48'000);
    content.write(folder / "clock.wav");
    std::optional<Latencies> added;
    for (int attempt = 0; attempt < 3 && !added; ++attempt) {
        added = measureOnce(content, folder);
    }
    if (!added) {
        table.row("added latency", "not measured: cycles were missing", "0 frames", false);
        return;
    }
    table.row("  pw-loopback's added latency", fmt::format("{} frames", added->loopback));
    table.row(
        "added latency", fmt::format("{} frames", added->tapped), "0 frames", added->tapped == 0);
}

} // namespace fadewell::integration
