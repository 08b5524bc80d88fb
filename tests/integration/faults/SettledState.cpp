#include "tests/integration/faults/SettledState.h"

#include "tests/integration/faults/FaultWorld.h"
#include "tests/integration/faults/ServerState.h"
#include "tests/integration/faults/Unsettled.h"
#include "tests/integration/support/Fadewell.h"

#include <algorithm>
#include <cmath>
#include <csignal>
#include <fmt/format.h>
#include <thread>

namespace fadewell::integration {
namespace {

using namespace std::chrono_literals;
using Presence = FaultWorld::Presence;
using Complaints = std::vector<std::string>;

/// Nothing is known of what the outputs play: the machine was too busy to record them.
class TooBusy : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

constexpr double tolerance = 0.5; // dB
constexpr double silence = -30;   // dB; the quietest that is chosen is 10 dB louder
constexpr auto stay = 300ms;
constexpr auto busyTime = 10s;          // waited longer when nothing can be measured
constexpr std::size_t mostIdleTaps = 2; // kept ready for apps that start
constexpr auto ownPrefix = "fadewell.";

/// Which one it is after outputs came and went is the session manager's choice.
std::string defaultOutput(const FaultWorld& world, const ServerState& state)
{
    const auto& live = world.outputs();
    if (live.contains(state.defaultOutput)) {
        return state.defaultOutput;
    }
    return live.contains(speakers) ? speakers : headphones;
}

/// One, except where the sound system itself leaves it open.
std::set<std::string>
possibleOutputs(const FaultWorld& world, const PlayingApp& app, const std::string& defaultOutput)
{
    const auto& live = world.outputs();
    if (world.presence() == Presence::running && live.contains(app.settings.output)) {
        return {app.settings.output};
    }
    if (!live.contains(app.ownOutput)) {
        return {defaultOutput};
    }
    if (app.mayHaveLeftItsOwnOutput) {
        return {app.ownOutput, defaultOutput};
    }
    return {app.ownOutput};
}

double expectedGain(const FaultWorld& world, const PlayingApp& app)
{
    if (world.presence() != Presence::running) {
        return 0;
    }
    return app.settings.isMuted ? silence : decibels(app.settings.percent / 100.0);
}

/// The gain that is farthest off, once what a short hole spoils is left out: players on a busy
/// machine have some by themselves.
double heardGain(const Sound& sound, double frequency, double expected)
{
    constexpr std::size_t parts = 6;
    constexpr std::size_t spoiled = 2;
    const auto length = sound.frames() / parts;
    std::vector<double> gains;
    for (std::size_t i = 0; i < parts; ++i) {
        const auto part = sound.part(i * length, length);
        double worst = expected;
        for (const auto* channel : {&part.left, &part.right}) {
            const auto factor = amplitudeOfTone(*channel, frequency) / PlayingApp::amplitude;
            const auto gain = std::max(decibels(factor), silence);
            worst = std::abs(gain - expected) > std::abs(worst - expected) ? gain : worst;
        }
        gains.push_back(worst);
    }
    std::sort(gains.begin(), gains.end(), [&](double left, double right) {
        return std::abs(left - expected) > std::abs(right - expected);
    });
    return gains[spoiled];
}

void checkSound(FaultWorld& world, const ServerState& state, Complaints& complaints)
{
    std::map<std::string, Sound> heard;
    for (const auto& output : world.outputs()) {
        auto sound = world.ears().heard(output);
        if (!sound) {
            complaints.push_back(output + " stands still");
            return;
        }
        if (!sound->isComplete) {
            throw TooBusy("the recording of " + output + " has gaps");
        }
        heard.emplace(output, std::move(*sound));
    }
    for (const auto& app : world.apps()) {
        const auto outputs = possibleOutputs(world, app, defaultOutput(world, state));
        const auto isRightIf = [&](const std::string& playing) {
            return std::all_of(heard.begin(), heard.end(), [&](const auto& entry) {
                const auto gain = entry.first == playing ? expectedGain(world, app) : silence;
                return std::abs(heardGain(entry.second, app.frequency, gain) - gain) <= tolerance;
            });
        };
        if (!std::any_of(outputs.begin(), outputs.end(), isRightIf)) {
            auto text = fmt::format("{}: expected {:.1f} dB on {}, heard",
                                    app.name,
                                    expectedGain(world, app),
                                    fmt::join(outputs, " or "));
            for (const auto& [output, sound] : heard) {
                text += fmt::format(
                    " {:.1f} dB on {}", heardGain(sound, app.frequency, silence), output);
            }
            complaints.push_back(std::move(text));
        }
    }
}

/// A pair that no stream is sent to; the second of each pair is named after the first.
std::size_t idleTaps(const ServerState& state)
{
    return static_cast<std::size_t>(
        std::count_if(state.nodes.begin(), state.nodes.end(), [&](const auto& node) {
            return node.name.starts_with(ownPrefix) && !node.name.ends_with(".out") &&
                   std::none_of(state.targets.begin(), state.targets.end(), [&](auto& target) {
                       return target.value == node.name || target.value == node.serial;
                   });
        }));
}

void checkNodes(const FaultWorld& world, const ServerState& state, Complaints& complaints)
{
    const bool isRunning = world.presence() == Presence::running;
    for (const auto& node : state.nodes) {
        const bool isOwn = node.name.starts_with(ownPrefix);
        if (isOwn && (!isRunning || node.name.find("lobby") != std::string::npos)) {
            complaints.push_back("left behind: node " + node.name);
        }
        const bool shallBeMuted = node.name == "microphone" && world.isMicrophoneMuted();
        if (node.isMuted != shallBeMuted) {
            complaints.push_back(
                fmt::format("{} is {}", node.name, node.isMuted ? "muted" : "not muted"));
        }
    }
    if (const auto idle = idleTaps(state); isRunning && idle > mostIdleTaps) {
        complaints.push_back(fmt::format("{} taps that nothing is sent to", idle));
    }
}

void checkTargets(const ServerState& state, Complaints& complaints)
{
    for (const auto& target : state.targets) {
        if (!state.hasNode(target.subject)) {
            complaints.push_back(fmt::format("target {} of a stream that is gone", target.value));
        } else if (target.value != "-1" && target.value != "null" && !state.hasNode(target.value)) {
            complaints.push_back(fmt::format("target {} does not exist", target.value));
        }
    }
}

void checkSettings(FaultWorld& world, Complaints& complaints)
{
    if (world.presence() != Presence::running) {
        return;
    }
    if (world.hasCrashed()) {
        complaints.emplace_back("Fadewell has crashed");
        return;
    }
    const auto result = Fadewell::control({"apps", "--json"});
    if (result.code != 0) {
        complaints.push_back("fadewellctl: " + result.errors);
        return;
    }
    const auto shown = nlohmann::json::parse(result.output);
    for (const auto& app : world.apps()) {
        const auto found = std::find_if(shown.begin(), shown.end(), [&](const auto& entry) {
            return entry.at("id") == app.id;
        });
        if (app.id.empty()) {
            continue; // not yet known
        }
        if (found == shown.end() || !found->at("isPlaying").template get<bool>()) {
            complaints.push_back(app.name + " is not listed as playing");
        } else if (const auto seen = RememberedSettings::fromJson(*found); seen != app.settings) {
            complaints.push_back(
                fmt::format("{} is {}, chosen was {}", app.name, seen.text(), app.settings.text()));
        }
    }
}

/// A player is an unmodified program of others: that the sound library crashes in it when outputs
/// go and come is told as what it is, also without Fadewell.
void checkPlayers(FaultWorld& world, Complaints& complaints)
{
    for (auto& app : world.apps()) {
        if (app.player->isRunning()) {
            continue;
        }
        if (app.player->wait() == -SIGSEGV) {
            throw std::runtime_error(app.name + " crashed itself");
        }
        complaints.push_back(app.name + " has ended: " + app.player->errors());
    }
}

/// A player that loses its output now and then never gives a sound again, with or without
/// Fadewell, until the next change of the graph: its sample converter asks it for nothing.
void expectSoundOfPlayers(FaultWorld& world)
{
    for (auto& app : world.apps()) {
        if (!app.player->isRunning()) {
            continue;
        }
        const Recorder recorder(app.name, Recorder::Source::player);
        if (recorder.read(recorder.now(), frames(stay)).isDigitalSilence()) {
            throw std::runtime_error(app.name + " gives no sound itself");
        }
    }
}

Complaints look(FaultWorld& world)
{
    Complaints complaints;
    checkPlayers(world, complaints);
    const auto state = ServerState::read();
    checkSound(world, state, complaints);
    checkNodes(world, state, complaints);
    checkTargets(state, complaints);
    checkSettings(world, complaints);
    return complaints;
}

} // namespace

void settle(FaultWorld& world, const std::string& phase)
{
    using Clock = std::chrono::steady_clock;
    const auto deadline = Clock::now() + world.patience();
    world.ears().listen(world.outputs());
    auto rightSince = Clock::time_point::max();
    for (;;) {
        const auto now = Clock::now(); // A look that began in time counts, however slow the tools.
        try {
            const auto complaints = look(world);
            rightSince = complaints.empty() ? std::min(rightSince, now) : Clock::time_point::max();
            if (complaints.empty() && now - rightSince >= stay) {
                return;
            }
            if (!complaints.empty() && now > deadline) {
                expectSoundOfPlayers(world);
                throw Unsettled(fmt::format("{}: {}", phase, fmt::join(complaints, "; ")));
            }
        } catch (const TooBusy&) {
            if (now > deadline + busyTime) {
                throw;
            }
        }
        std::this_thread::sleep_for(30ms);
    }
}

} // namespace fadewell::integration
