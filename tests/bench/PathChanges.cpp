#include "tests/bench/Changes.h"
#include "tests/bench/PathApps.h"
#include "tests/bench/PathBench.h"
#include "tests/integration/support/Await.h"
#include "tests/integration/support/CountedSound.h"
#include "tests/integration/support/Fadewell.h"
#include "tests/integration/support/Recorder.h"
#include "tests/integration/support/Session.h"

#include <algorithm>
#include <fmt/format.h>
#include <functional>
#include <map>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>
#include <stdexcept>

namespace fadewell::integration {
namespace {

using namespace std::chrono_literals;

constexpr double chosenGain = 0.4;
constexpr auto margin = 100ms;

const CountedSound& content()
{
    static const CountedSound sound(20 * 48'000);
    return sound;
}

void require(bool isSo, const std::string& what)
{
    if (!isSo) {
        throw std::runtime_error(what);
    }
}

bool playsAt(const Recorder& recorder, double gain)
{
    return await([&] {
        const auto check = content().check(recorder.read(recorder.now(), frames(50ms)), gain);
        return check.isHeard && check.wrong == 0;
    });
}

/// The number of a playing stream, as the metadata names it.
std::string numberOf(const std::string& node)
{
    for (const auto& object : nlohmann::json::parse(runCommand({"pw-dump"}).output)) {
        if (object.value("/info/props/node.name"_json_pointer, std::string()) == node) {
            return std::to_string(object.at("id").get<int>());
        }
    }
    throw std::runtime_error("no stream of " + node);
}

/// As a desktop's mixer moves a stream.
void sendTo(const std::string& stream, const std::string& output)
{
    require(runCommand({"pw-metadata", stream, "target.object", output}).code == 0,
            "pw-metadata failed");
}

/// An app that plays on an output of its own.
struct Player {
    Player(const std::filesystem::path& folder, std::string protocolName, std::string outputName)
        : protocol(std::move(protocolName))
        , output(std::move(outputName))
        , name("on-" + output)
        , recorder(output)
        , process(startApp(folder, name, protocol, folder / "changes.wav", "loop", ""))
        , app(awaitApp(process.pid()))
    {
        sendTo(numberOf(name), output);
        require(playsAt(recorder, 1), name + " is not heard");
    }

    std::string protocol;
    std::string output;
    std::string name;
    Recorder recorder;
    ChildProcess process;
    std::string app;
    std::size_t begin = 0; ///< of the change, in the recording
    bool isTapped = false;
};

/// Sound and silence of all of the change, once it is over.
CountedCheck checkChange(const Player& player)
{
    const auto end = player.recorder.now() + frames(margin);
    return content().check(player.recorder.read(player.begin, end - player.begin), chosenGain);
}

using Players = std::vector<std::unique_ptr<Player>>;

/// Looks whether the players are linked to their outputs again, and checks those that newly are.
bool areFree(const Players& players, std::map<std::string, Changes>& detached)
{
    for (const auto& player : players) {
        const auto now = player->recorder.now();
        if (player->isTapped && isDirect(player->name, player->output)) {
            player->isTapped = false;
            detached[player->protocol].add(checkChange(*player));
        } else if (player->isTapped) {
            player->begin = now; // not yet: only the change itself counts
        }
    }
    return std::none_of(
        players.begin(), players.end(), [](const auto& player) { return player->isTapped; });
}

void attachAndDetach(PathTable& table, const std::filesystem::path& folder, std::size_t count)
{
    Players players;
    for (const auto* output : {"third", "fourth", "fifth", "sixth"}) {
        const auto* protocol = players.size() < 2 ? "native" : "pulse";
        players.push_back(std::make_unique<Player>(folder, protocol, output));
    }
    std::map<std::string, Changes> attached;
    std::map<std::string, Changes> detached;
    const auto isEnough = [&] {
        const auto fewest = std::min(attached["native"].count(), attached["pulse"].count());
        return fewest >= count || players.front()->recorder.now() > frames(100s);
    };
    while (!isEnough()) {
        for (auto& player : players) {
            spreadOverCycle();
            player->begin = player->recorder.now();
            controlFadewell({"volume", player->app, "40%"});
            require(playsAt(player->recorder, chosenGain), player->name + " is not attached");
            attached[player->protocol].add(checkChange(*player));
            player->isTapped = true;
        }
        for (auto& player : players) {
            player->begin = player->recorder.now();
            controlFadewell({"forget", player->app});
        }
        require(await([&] { return areFree(players, detached); }), "an app is not let go");
    }
    for (const auto* protocol : {"native", "pulse"}) {
        attached[protocol].print(table, fmt::format("attach {}", protocol));
        detached[protocol].print(table, fmt::format("detach {}", protocol));
    }
}

/// Both outputs' recordings of a move to the other one as one sound's check.
CountedCheck checkMove(const Sound& left, const Sound& entered)
{
    auto check = content().check(left, chosenGain);
    const auto after = content().check(entered, chosenGain);
    const std::size_t next = content().frames() - check.tail;
    const std::size_t jump = (after.head + content().frames() - next) % content().frames();
    check.isMeasured = check.isMeasured && after.isMeasured && check.isHeard && after.isHeard;
    check.inside += after.inside + std::min(jump, content().frames() - jump);
    check.zeros += after.zeros;
    return check;
}

/// Moves an app to the other output and back until there are `count` moves.
Changes move(double gain,
             std::size_t count,
             const Recorder& first,
             const Recorder& second,
             const std::function<void(bool isThere)>& request)
{
    Changes changes;
    bool isThere = false;
    for (std::size_t i = 0; changes.count() < count && i < 2 * count; ++i) {
        const auto& from = isThere ? second : first;
        const auto& to = isThere ? first : second;
        spreadOverCycle();
        const auto beginFrom = from.now();
        const auto beginTo = to.now();
        isThere = !isThere;
        request(isThere);
        require(playsAt(to, gain) && from.awaitSilence(), "an app does not move");
        changes.add(checkMove(from.readUntilNow(beginFrom), to.readUntilNow(beginTo)));
    }
    return changes;
}

void moveTapped(PathTable& table, const std::filesystem::path& folder, std::size_t count)
{
    for (const std::string protocol : {"native", "pulse"}) {
        const Recorder first(speakers);
        const Recorder second(headphones);
        const auto name = "moved-" + protocol;
        auto process = startApp(folder, name, protocol, folder / "changes.wav", "loop", "");
        const auto app = awaitApp(process.pid());
        require(playsAt(first, 1), "an app is not heard");
        controlFadewell({"volume", app, "40%"});
        require(playsAt(first, chosenGain), "an app is not attached");
        move(chosenGain, count, first, second, [&](bool isThere) {
            controlFadewell({"output", app, isThere ? headphones : "system"});
        }).print(table, "move " + protocol);
        controlFadewell({"forget", app});
    }
}

void moveUntapped(PathTable& table, const std::filesystem::path& folder, std::size_t count)
{
    for (const std::string protocol : {"native", "pulse"}) {
        const Recorder first(speakers);
        const Recorder second(headphones);
        const auto name = "server-" + protocol;
        auto process = startApp(folder, name, protocol, folder / "changes.wav", "loop", "");
        require(playsAt(first, 1), "an app is not heard");
        const auto stream = numberOf(name);
        const auto changes = move(1, count, first, second, [&](bool isThere) {
            sendTo(stream, isThere ? headphones : speakers);
        });
        table.row("  the session manager's own, " + protocol, changes.text());
    }
}

} // namespace

void measureChanges(PathTable& table, const std::filesystem::path& folder, std::size_t count)
{
    content().write(folder / "changes.wav");
    {
        const Fadewell fadewell;
        try {
            attachAndDetach(table, folder, count);
            moveTapped(table, folder, count);
        } catch (const std::runtime_error& error) {
            throw std::runtime_error(error.what() + ("; Fadewell's log:\n" + fadewell.log()));
        }
    }
    moveUntapped(table, folder, count);
}

} // namespace fadewell::integration
