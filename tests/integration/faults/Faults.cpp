#include "tests/integration/faults/Faults.h"

#include "tests/integration/faults/Dice.h"
#include "tests/integration/faults/FaultWorld.h"
#include "tests/integration/faults/SettledState.h"
#include "tests/integration/support/Outage.h"

#include <algorithm>
#include <fstream>
#include <numeric>
#include <stdexcept>
#include <thread>

namespace fadewell::integration {
namespace {

using namespace std::chrono_literals;
using Presence = FaultWorld::Presence;

constexpr int endSignals[] = {SIGTERM, SIGKILL};
constexpr auto writeTime = 250ms; ///< what was chosen is on disk by then

PlayingApp& anyApp(FaultWorld& world, Dice& dice)
{
    return world.apps()[dice.below(world.apps().size())];
}

void changeSetting(FaultWorld& world, Dice& dice)
{
    constexpr int percents[] = {100, 75, 50, 40, 20, 10};
    auto& app = anyApp(world, dice);
    switch (dice.below(8)) {
    case 0:
    case 1:
    case 2:
        return world.setVolume(app, dice.oneOf(percents));
    case 3:
        return world.setMuted(app, !app.settings.isMuted);
    case 4:
    case 5: {
        const auto& outputs = world.outputs();
        const auto choice = dice.below(outputs.size() + 1);
        return world.setOutput(
            app,
            choice == outputs.size() ? "" : *std::next(outputs.begin(), static_cast<long>(choice)));
    }
    case 6:
        return world.muteMicrophone(!world.isMicrophoneMuted());
    default:
        return world.forget(app);
    }
}

void changeSettings(FaultWorld& world, Dice& dice)
{
    for (auto count = 1 + dice.below(6); count > 0; --count) {
        changeSetting(world, dice);
        std::this_thread::sleep_for(dice.between(0, 200));
    }
}

/// Often a fault comes while something is changing.
void maybeChange(FaultWorld& world, Dice& dice)
{
    if (dice.oneIn(3) && world.presence() == Presence::running) {
        changeSetting(world, dice);
    }
}

void killFadewell(FaultWorld& world, Dice& dice)
{
    const auto before = world.settings();
    if (dice.oneIn(2)) {
        changeSetting(world, dice);
        std::this_thread::sleep_for(dice.between(0, 120)); // perhaps before it is on disk
    }
    world.killFadewell(before);
    if (world.presence() == Presence::killed) {
        if (dice.oneIn(2)) {
            settle(world, "killed");
        }
        world.startFadewell(before);
    }
}

void endFadewell(FaultWorld& world, Dice& dice)
{
    maybeChange(world, dice);
    world.endFadewell(dice.oneIn(3));
    settle(world, "ended");
    world.startFadewell();
}

void freezeFadewell(FaultWorld& world, Dice& dice)
{
    const auto before = world.settings(); // its supervisor may end it before it has written
    maybeChange(world, dice);
    world.freezeFadewell(dice.between(200, 3000), before);
    if (world.presence() == Presence::killed) {
        world.startFadewell(before);
    }
}

void restartManager(FaultWorld& world, Dice& dice)
{
    maybeChange(world, dice);
    const auto signal = dice.oneOf(endSignals);
    world.restartPrograms({sessionManager}, signal, dice.between(0, 2500));
}

void restartServer(FaultWorld& world, Dice& dice)
{
    maybeChange(world, dice);
    const auto signal = dice.oneOf(endSignals);
    world.restartPrograms(
        {soundServer, sessionManager, pulseServer}, signal, dice.between(0, 2500));
}

void restartPulse(FaultWorld& world, Dice& dice)
{
    maybeChange(world, dice);
    world.restartPrograms({pulseServer}, dice.oneOf(endSignals), dice.between(0, 1000));
}

void loseOutputs(FaultWorld& world, Dice& dice)
{
    constexpr const char* outputs[] = {speakers, headphones};
    const auto first = dice.below(2);
    const bool areBothLost = dice.oneIn(6);
    world.loseOutput(outputs[first]);
    if (areBothLost) {
        std::this_thread::sleep_for(dice.between(0, 1000));
        world.loseOutput(outputs[1 - first]);
    }
    if (!areBothLost && dice.oneIn(2)) {
        settle(world, "unplugged");
    } else {
        std::this_thread::sleep_for(dice.between(0, 3000));
    }
    world.returnOutputs();
}

void killAppInStart(FaultWorld& world, Dice& dice)
{
    auto& app = anyApp(world, dice);
    const bool isSecond = dice.oneIn(2);
    world.note("kill starts of " + app.name + (isSecond ? ", which plays" : ""));
    if (!isSecond) {
        app.player.reset();
        std::this_thread::sleep_for(dice.between(0, 500));
    }
    for (auto count = 1 + dice.below(5); count > 0; --count) {
        const ChildProcess started(app.command);
        std::this_thread::sleep_for(dice.between(0, 60));
    }
    if (!isSecond) {
        app.restart();
    }
}

void restartApp(FaultWorld& world, Dice& dice)
{
    auto& app = anyApp(world, dice);
    world.note("end " + app.name);
    app.player->signal(dice.oneOf(endSignals));
    std::this_thread::sleep_for(dice.between(0, 1000));
    maybeChange(world, dice);
    world.restartApp(app);
}

/// Nothing can be stored; memory keeps what is chosen, and once it can be again, it is.
void breakDisk(FaultWorld& world, Dice& dice, const char* how, void (*set)(FaultWorld&, bool))
{
    const auto before = world.settings();
    world.note(how);
    set(world, true);
    changeSettings(world, dice);
    settle(world, how);
    const bool isEnded = dice.oneIn(3);
    if (isEnded) {
        dice.oneIn(2) ? world.endFadewell() : world.killFadewell(before);
    }
    world.note("repair it");
    set(world, false);
    if (world.presence() != Presence::running) {
        world.startFadewell(before);
    } else if (!isEnded) {
        auto& app = anyApp(world, dice);
        world.setVolume(app, app.settings.percent == 40 ? 50 : 40); // a change, so that it writes
        std::this_thread::sleep_for(writeTime);
        world.killFadewell();
        if (world.presence() == Presence::killed) {
            world.startFadewell();
        }
    }
}

void fillDisk(FaultWorld& world, Dice& dice)
{
    breakDisk(world, dice, "full disk", [](FaultWorld& of, bool isFull) {
        isFull ? of.disk().fill() : of.disk().makeRoom();
    });
}

void protectDisk(FaultWorld& world, Dice& dice)
{
    breakDisk(world, dice, "read-only disk", [](FaultWorld& of, bool isProtected) {
        of.disk().setReadOnly(isProtected);
    });
}

std::string damaged(std::string text, Dice& dice)
{
    if (dice.oneIn(2)) {
        return text.substr(0, dice.below(text.size() + 1));
    }
    for (auto count = 1 + dice.below(20); count > 0 && !text.empty(); --count) {
        text[dice.below(text.size())] = static_cast<char>(dice.below(256));
    }
    return text;
}

void damageSettings(FaultWorld& world, Dice& dice)
{
    dice.oneIn(2) ? world.endFadewell() : world.killFadewell();
    if (world.presence() == Presence::running) {
        world.endFadewell(); // its supervisor was faster
    }
    world.note("damage the settings");
    const auto file = world.disk().folder() / "fadewell" / "settings.json";
    std::string text;
    std::getline(std::ifstream(file), text, '\0');
    std::ofstream(file, std::ios::binary) << damaged(std::move(text), dice);
    world.startFadewell();
    world.adoptSettings();
    changeSettings(world, dice);
}

struct Kind {
    const char* name;
    std::size_t weight;
    void (*act)(FaultWorld&, Dice&);
    bool needsFadewell = true;
    bool needsDisk = false;
};

constexpr Kind kinds[] = {
    {"kill", 4, killFadewell},
    {"end", 2, endFadewell},
    {"freeze", 3, freezeFadewell},
    {"manager", 2, restartManager, false},
    {"server", 2, restartServer, false},
    {"pulse", 2, restartPulse, false},
    {"outputs", 5, loseOutputs, false},
    {"app-start", 5, killAppInStart, false},
    {"app-restart", 4, restartApp, false},
    {"settings", 3, changeSettings},
    {"full", 2, fillDisk, true, true},
    {"read-only", 2, protectDisk, true, true},
    {"damage", 2, damageSettings},
};

const Kind& kindOf(Dice& dice)
{
    const auto total = std::accumulate(
        std::begin(kinds), std::end(kinds), std::size_t{0}, [](auto sum, const auto& kind) {
            return sum + kind.weight;
        });
    auto choice = dice.below(total);
    const auto* kind = std::begin(kinds);
    while (choice >= kind->weight) {
        choice -= kind->weight;
        ++kind;
    }
    return *kind;
}

} // namespace

std::vector<std::string> faultNames()
{
    std::vector<std::string> names;
    for (const auto& kind : kinds) {
        names.emplace_back(kind.name);
    }
    return names;
}

std::string faultName(std::uint64_t seed, std::uint64_t number)
{
    Dice dice(seed, number);
    return kindOf(dice).name;
}

void doFault(FaultWorld& world, std::uint64_t seed, std::uint64_t number, const std::string& only)
{
    Dice dice(seed, number);
    const auto* kind = &kindOf(dice);
    if (!only.empty()) {
        kind = std::find_if(std::begin(kinds), std::end(kinds), [&](const auto& candidate) {
            return candidate.name == only;
        });
        if (kind == std::end(kinds)) {
            throw std::invalid_argument("no fault is called " + only);
        }
    }
    world.clearStory();
    if ((kind->needsFadewell && world.presence() != Presence::running) ||
        (kind->needsDisk && !world.disk().isMounted()))
    {
        return world.note("left out");
    }
    world.freshenPlayers();
    settle(world, "before");
    kind->act(world, dice);
    settle(world, "after");
}

} // namespace fadewell::integration
