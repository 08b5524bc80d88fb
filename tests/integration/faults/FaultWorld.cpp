#include "tests/integration/faults/FaultWorld.h"

#include "tests/integration/faults/Unsettled.h"
#include "tests/integration/support/Await.h"
#include "tests/integration/support/Fadewell.h"
#include "tests/integration/support/Outage.h"
#include "tests/integration/support/Player.h"

#include <algorithm>
#include <fmt/format.h>
#include <sys/syscall.h>
#include <thread>
#include <unistd.h>

namespace fadewell::integration {
namespace {

using namespace std::chrono_literals;
namespace fs = std::filesystem;

constexpr auto longestPlay = 60s; // the tones are two minutes long
constexpr auto answerTime = 5s;

/// A program of its own name is an app of its own.
std::string copyOf(const std::string& program, const fs::path& copy)
{
    const auto found = runCommand({"sh", "-c", "readlink -f \"$(command -v " + program + ")\""});
    fs::copy_file(found.output.substr(0, found.output.find('\n')), copy);
    return copy.string();
}

} // namespace

FaultWorld::FaultWorld(bool hasFadewell)
    : outputs_{speakers, headphones}
{
    makeApps();
    for (auto& app : apps_) {
        app.restart();
    }
    if (!hasFadewell) {
        return;
    }
    startFadewell();
    learnIDs();
    setVolume(apps_[0], 40);
    setVolume(apps_[1], 75);
    setOutput(apps_[1], headphones);
    setVolume(apps_[3], 20);
    clearStory();
}

FaultWorld::~FaultWorld() = default;

void FaultWorld::makeApps()
{
    const auto folder = session_.folder();
    const auto tone = [&](double frequency) {
        auto file = (folder / fmt::format("{}.wav", frequency)).string();
        writeTone(file, frequency, PlayingApp::amplitude);
        return file;
    };
    const auto native = copyOf("pw-play", folder / "native");
    const auto pinned = copyOf("pw-play", folder / "own-output");
    const auto pulse = copyOf("paplay", folder / "pulse");
    const auto add = [&](const char* name, double frequency, std::vector<std::string> command) {
        command.push_back(tone(frequency));
        apps_.push_back({.name = name, .frequency = frequency, .command = std::move(command)});
    };
    add("native", 100, {native, "-p"});
    add("pulse", 300, {pulse, "--playback", "--file-format=wav"});
    add("mpv", 500, {"mpv", "--no-config", "--no-terminal", "--no-video", "--ao=pipewire"});
    add("own-output", 700, {pinned, "-p", std::string("--target=") + headphones});
    apps_[1].isPulse = true;
    apps_.back().ownOutput = headphones;
}

void FaultWorld::learnIDs()
{
    const auto allKnown = [this] {
        for (auto& app : apps_) {
            app.id = Fadewell::appOf(app.player->pid());
        }
        return std::none_of(apps_.begin(), apps_.end(), [](auto& app) { return app.id.empty(); });
    };
    if (!await(allKnown)) {
        throw Unsettled("Fadewell does not list every app: " + Fadewell::apps().dump());
    }
}

bool FaultWorld::hasCrashed()
{
    return presence_ == Presence::running &&
           (!fadewell_->isRunning() || fadewell_->pid() != worker_);
}

std::string FaultWorld::traces() const
{
    std::string text = lastLog_ + "\n--\n" + (fadewell_ ? fadewell_->log() : "");
    for (const auto* command : {"pw-metadata | grep -e target -e default.audio.sink",
                                "pw-cli ls Node | grep node.name",
                                FADEWELL_PROGRAMS "/fadewellctl outputs",
                                FADEWELL_PROGRAMS "/fadewellctl microphone",
                                "pw-link -l | grep -A1 output"})
    {
        text += runCommand({"timeout", "2", "sh", "-c", command}).output;
    }
    return text;
}

void FaultWorld::awaitAnswer()
{
    // It answers a moment before it has looked at the outputs.
    const auto answers = [this] {
        const auto listed = Fadewell::control({"outputs"});
        return !fadewell_->isRunning() ||
               (listed.code == 0 &&
                std::all_of(outputs_.begin(), outputs_.end(), [&](const std::string& output) {
                    return listed.output.find(output) != std::string::npos;
                }));
    };
    if (!await(answers, answerTime) || !fadewell_->isRunning()) {
        throw Unsettled("Fadewell does not answer");
    }
    worker_ = fadewell_->pid();
    presence_ = Presence::running;
    isMicrophoneMuted_ = false; // a mute doesn't outlast the program
}

void FaultWorld::startFadewell(const std::vector<RememberedSettings>& possible)
{
    note("start Fadewell");
    lastLog_ = fadewell_ ? fadewell_->log() : "";
    fadewell_.reset();
    try {
        fadewell_.emplace("XDG_CONFIG_HOME=" + disk_.folder().string());
    } catch (const std::runtime_error& error) {
        throw Unsettled(error.what());
    }
    awaitAnswer();
    acceptSettings(possible);
}

void FaultWorld::acceptSettings(const std::vector<RememberedSettings>& possible)
{
    for (std::size_t i = 0; i < possible.size(); ++i) {
        auto& app = apps_[i];
        if (app.settings != possible[i] && shownSettings(app) == possible[i]) {
            app.settings = possible[i];
        }
    }
}

RememberedSettings FaultWorld::shownSettings(const PlayingApp& app)
{
    std::optional<RememberedSettings> settings;
    const auto isShown = [&] {
        for (const auto& shown : Fadewell::apps()) {
            if (shown.at("id") == app.id) {
                settings = RememberedSettings::fromJson(shown);
            }
        }
        return settings.has_value();
    };
    if (!await(isShown, answerTime)) {
        throw Unsettled(app.name + " is not listed");
    }
    return *settings;
}

void FaultWorld::adoptSettings()
{
    for (auto& app : apps_) {
        app.settings = shownSettings(app);
    }
}

std::vector<RememberedSettings> FaultWorld::settings() const
{
    std::vector<RememberedSettings> all;
    for (const auto& app : apps_) {
        all.push_back(app.settings);
    }
    return all;
}

void FaultWorld::endFadewell(bool byCommand)
{
    note(byCommand ? "quit Fadewell" : "end Fadewell");
    if (byCommand) {
        command({"quit"});
    } else {
        fadewell_->signal(SIGTERM);
    }
    if (const auto code = fadewell_->wait(); code != 0) {
        throw Unsettled(code ? fmt::format("Fadewell ended with {}", *code)
                             : "Fadewell does not end");
    }
    presence_ = Presence::ended;
    isMicrophoneMuted_ = false;
}

bool FaultWorld::awaitDecision(std::chrono::milliseconds time)
{
    return await(
        [this] { return !fadewell_->isRunning() || Fadewell::control({"outputs"}).code == 0; },
        time);
}

void FaultWorld::killFadewell(const std::vector<RememberedSettings>& possible)
{
    note("kill Fadewell");
    kill(worker_, SIGKILL);
    if (!awaitDecision(answerTime)) {
        throw Unsettled("neither ended nor restarted");
    }
    presence_ = Presence::killed;
    isMicrophoneMuted_ = false;
    if (fadewell_->isRunning()) {
        awaitAnswer();
        acceptSettings(possible);
    }
}

void FaultWorld::freezeFadewell(std::chrono::milliseconds time,
                                const std::vector<RememberedSettings>& possible)
{
    note(fmt::format("freeze Fadewell for {} ms", time.count()));
    // Its supervisor may end and collect it meanwhile, and the pid become another program's.
    const auto handle = static_cast<int>(syscall(SYS_pidfd_open, worker_, 0));
    syscall(SYS_pidfd_send_signal, handle, SIGSTOP, nullptr, 0);
    std::this_thread::sleep_for(time);
    syscall(SYS_pidfd_send_signal, handle, SIGCONT, nullptr, 0);
    close(handle);
    const bool isMuted = std::exchange(isMicrophoneMuted_, false);
    const auto before = worker_;
    presence_ = Presence::killed; // by its supervisor, which doesn't start it a second time
    if (awaitDecision(answerTime) && !fadewell_->isRunning()) {
        return;
    }
    awaitAnswer();
    isMicrophoneMuted_ = isMuted && worker_ == before;
    if (worker_ != before) {
        acceptSettings(possible);
    }
}

void FaultWorld::command(std::vector<std::string> arguments)
{
    const auto text = fmt::format("fadewellctl {}", fmt::join(arguments, " "));
    const auto result = Fadewell::control(std::move(arguments));
    if (result.code != 0) {
        throw Unsettled(text + ": " + result.errors);
    }
}

void FaultWorld::setVolume(PlayingApp& app, int percent)
{
    note(fmt::format("{} to {}%", app.name, percent));
    command({"volume", app.id, fmt::format("{}%", percent)});
    app.settings.percent = percent;
    app.settings.isMuted = false;
}

void FaultWorld::setMuted(PlayingApp& app, bool isMuted)
{
    note(fmt::format("{} {}", isMuted ? "mute" : "unmute", app.name));
    command({"mute", app.id, isMuted ? "on" : "off"});
    app.settings.isMuted = isMuted;
}

void FaultWorld::setOutput(PlayingApp& app, const std::string& output)
{
    note(fmt::format("{} on {}", app.name, output.empty() ? "system" : output));
    command({"output", app.id, output.empty() ? "system" : output});
    app.settings.output = output;
}

void FaultWorld::forget(PlayingApp& app)
{
    note("forget " + app.name);
    command({"forget", app.id});
    app.settings = {};
}

void FaultWorld::muteMicrophone(bool isMuted)
{
    note(isMuted ? "mute the microphone" : "unmute the microphone");
    command({"microphone", isMuted ? "off" : "on"});
    isMicrophoneMuted_ = isMuted;
}

void FaultWorld::countLoss()
{
    losses_.push_back(std::chrono::steady_clock::now());
    ears_.lose();
    for (auto& app : apps_) {
        app.mayHaveLeftItsOwnOutput = true;
    }
}

std::chrono::milliseconds FaultWorld::patience() const
{
    // The fourth has Fadewell leave an app alone for 10 s, from the moment it believes the loss.
    constexpr std::size_t most = 3;
    const auto count = losses_.size();
    const bool areMore = count > most && losses_.back() - losses_[count - 1 - most] < 11s &&
                         std::chrono::steady_clock::now() - losses_.back() < 12s;
    return areMore ? 12s : 3s;
}

void FaultWorld::loseOutput(const std::string& output)
{
    note("unplug " + output);
    removeOutput(output);
    outputs_.erase(output);
    countLoss();
}

void FaultWorld::returnOutputs()
{
    note("plug in again");
    addMissingDevices();
    outputs_ = {speakers, headphones};
    awaitSession();
}

void FaultWorld::restartPrograms(const std::vector<std::string>& names,
                                 int signal,
                                 std::chrono::milliseconds absence)
{
    note(fmt::format("{} {} for {} ms",
                     signal == SIGKILL ? "kill" : "end",
                     fmt::join(names, " and "),
                     absence.count()));
    for (const auto& name : names) {
        endProgram(name, signal);
    }
    countLoss();
    const auto isAmong = [&](const char* name) {
        return std::count(names.begin(), names.end(), name) > 0;
    };
    for (auto& app : apps_) {
        // With or without Fadewell, a Pulse stream doesn't outlive the session manager, and the
        // next one waits for it before it links anything.
        if (isAmong(soundServer) || (app.isPulse && isAmong(sessionManager))) {
            app.player.reset();
        }
    }
    if (isAmong(sessionManager) && !isAmong(soundServer)) {
        // As real ones do: one that starts among these may never link anything to them.
        for (const auto* device : {speakers, headphones, "microphone"}) {
            removeOutput(device);
        }
    }
    std::this_thread::sleep_for(absence);
    for (const auto& name : names) {
        startProgram(name);
    }
    awaitSession();
    std::this_thread::sleep_for(200ms); // until a player has noticed the end of its server
    for (auto& app : apps_) {
        if (!app.player || !app.player->isRunning()) {
            app.restart();
        }
    }
}

void FaultWorld::restartApp(PlayingApp& app)
{
    note("start " + app.name + " anew");
    app.restart();
}

void FaultWorld::freshenPlayers()
{
    for (auto& app : apps_) {
        if (PlayingApp::Clock::now() - app.start > longestPlay) {
            app.restart();
        }
    }
}

} // namespace fadewell::integration
