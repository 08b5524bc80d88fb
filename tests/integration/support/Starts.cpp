#include "tests/integration/support/Starts.h"

#include "tests/integration/support/Await.h"
#include "tests/integration/support/Fadewell.h"
#include "tests/integration/support/Player.h"
#include "tests/integration/support/Session.h"

#include <csignal>
#include <stdexcept>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace fadewell::integration {
namespace {

using namespace std::chrono_literals;

constexpr std::size_t mostSpoilt = 3; // for each that is asked for
constexpr std::size_t streamsInARow = 20;
constexpr auto patience = 4s;
constexpr auto longestRecording = 60s; // half of what a recorder holds

/// One line to mpv's control socket.
void tellPlayer(const std::string& path, const std::string& line)
{
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    path.copy(address.sun_path, sizeof address.sun_path - 1);
    const int connection = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    const bool isTold =
        connect(connection, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0 &&
        write(connection, line.data(), line.size()) == static_cast<ssize_t>(line.size());
    close(connection);
    if (!isTold) {
        throw std::runtime_error("the player does not listen");
    }
}

} // namespace

std::vector<std::string> programsOf(StartKind kind)
{
    switch (kind) {
    case StartKind::start:
    case StartKind::restart:
        return {std::begin(players), std::end(players)};
    case StartKind::resume:
        return {"mpv", "client-native", "client-pulse"};
    case StartKind::row:
        return {"client-native", "client-pulse"};
    }
    return {};
}

Starts::Starts(std::filesystem::path folder, std::chrono::milliseconds rest)
    : folder_(std::move(folder))
    , rest_(rest)
{
    quarter_.write(file(Length::quarter));
    minute_.write(file(Length::minute));
}

std::filesystem::path Starts::file(Length length) const
{
    return folder_ / (length == Length::quarter ? "quarter.wav" : "minute.wav");
}

ChildProcess
Starts::run(const std::string& program, Length length, const std::string& streams) const
{
    constexpr std::string_view client = "client-";
    return program.starts_with(client) ? ChildProcess({FADEWELL_PROGRAMS "/sound_client",
                                                       program.substr(client.size()),
                                                       file(length),
                                                       streams})
                                       : play(program, file(length));
}

const Recorder& Starts::recorder()
{
    if (!recorder_ || recorder_->now() > integration::frames(longestRecording)) {
        recorder_.reset();
        recorder_ = std::make_unique<Recorder>(speakers);
    }
    return *recorder_;
}

bool Starts::awaitSound(std::size_t from) const
{
    return await([&] { return !recorder_->readUntilNow(from).isDigitalSilence(); }, patience);
}

void Starts::remember(const std::string& program, int volume)
{
    const auto begin = recorder().now();
    auto player = run(program, Length::minute);
    std::string app;
    if (!awaitSound(begin) ||
        !await([&] { return !(app = Fadewell::appOf(player.pid())).empty(); })) {
        throw std::runtime_error(program + " is not listed: " + player.errors());
    }
    if (Fadewell::control({"volume", app, std::to_string(volume) + "%"}).code != 0 ||
        !awaitVolume(volume / 100.0))
    {
        throw std::runtime_error(app + " does not play at its volume");
    }
    player.signal(SIGTERM);
    if (!player.wait() || !recorder_->awaitSilence()) {
        throw std::runtime_error(program + " does not end");
    }
}

bool Starts::awaitVolume(double gain)
{
    return await([&] {
        const auto latest = recorder_->read(recorder_->now(), integration::frames(50ms));
        const auto check = minute_.check(latest, gain);
        return check.isHeard && check.wrong == 0;
    });
}

CountedCheck Starts::start(const std::string& program, double gain)
{
    spreadOverCycle();
    const auto begin = recorder().now();
    auto player = run(program, Length::quarter);
    const bool isHeard = awaitSound(begin);
    const auto code = player.wait(patience);
    player.signal(SIGKILL);
    if (isHeard && !recorder_->awaitSilence(patience)) {
        throw std::runtime_error(program + " has ended but goes on playing");
    }
    if (isHeard && code != 0) {
        throw std::runtime_error(program + " failed: " + player.errors());
    }
    return quarter_.check(recorder_->readUntilNow(begin), gain);
}

void Starts::playAndQuit(const std::string& program)
{
    const auto begin = recorder().now();
    auto player = run(program, Length::minute);
    const bool isHeard = awaitSound(begin);
    player.signal(SIGTERM);
    if (!isHeard || !player.wait(patience) || !recorder_->awaitSilence(patience)) {
        throw std::runtime_error(program + " can't be played and ended: " + player.errors());
    }
}

void Starts::togglePause(const ChildProcess& player, const std::string& program) const
{
    if (program == "mpv") {
        tellPlayer(controlOf(file(Length::minute)), "cycle pause\n");
    } else {
        player.signal(SIGUSR1);
    }
}

CountedCheck Starts::resume(const ChildProcess& player, const std::string& program, double gain)
{
    const auto begin = recorder_->now();
    togglePause(player, program);
    if (!recorder_->awaitSilence(patience)) {
        throw std::runtime_error(program + " does not pause");
    }
    spreadOverCycle();
    const auto request = recorder_->now();
    togglePause(player, program);
    if (!awaitSound(request)) {
        return {};
    }
    const auto end = recorder_->now() + integration::frames(150ms);
    const auto sound = recorder_->read(begin, end - begin);
    auto check = minute_.check(sound, gain);
    check.zeros -= check.longest; // the pause
    check.first = firstSound(sound, request - begin) - (request - begin);
    check.head = 0;
    check.tail = 0;
    return check;
}

std::vector<CountedCheck>
Starts::resumes(const std::string& program, double gain, std::size_t count)
{
    const auto begin = recorder().now();
    auto player = run(program, Length::minute, "loop");
    // A resume is judged, not the start before it.
    if (!awaitSound(begin) || !awaitVolume(gain)) {
        throw std::runtime_error(program + " is not heard at its volume: " + player.errors());
    }
    std::vector<CountedCheck> checks;
    // To be over before the sound's end.
    while (checks.size() < count && recorder_->now() - begin < integration::frames(45s)) {
        checks.push_back(resume(player, program, gain));
        if (!checks.back().isHeard) {
            break;
        }
    }
    player.signal(SIGTERM);
    player.signal(SIGCONT);
    if (!player.wait() || !recorder_->awaitSilence()) {
        throw std::runtime_error(program + " does not end");
    }
    return checks;
}

std::vector<CountedCheck> Starts::row(const std::string& program, double gain, std::size_t streams)
{
    std::vector<CountedCheck> checks;
    const auto begin = recorder().now();
    auto player = run(program, Length::quarter, std::to_string(streams));
    const bool isOver = player.wait(1s * streams).has_value() && recorder_->awaitSilence();
    const auto sound = recorder_->readUntilNow(begin);
    for (const auto& part : partsBetweenHoles(sound, integration::frames(200ms))) {
        checks.push_back(quarter_.check(part, gain));
        checks.back().isMeasured = sound.isComplete;
    }
    if (!isOver || checks.size() < streams) {
        checks.resize(streams); // what is missing was not heard
    }
    return checks;
}

StartTally
Starts::measure(StartKind kind, const std::string& program, double gain, std::size_t count)
{
    StartTally tally;
    const auto begin = [&]() -> std::vector<CountedCheck> {
        switch (kind) {
        case StartKind::resume:
            return resumes(program, gain, count - tally.count());
        case StartKind::row:
            return row(program, gain, streamsInARow);
        case StartKind::restart:
            playAndQuit(program);
            return {start(program, gain)};
        case StartKind::start:
            std::this_thread::sleep_for(rest_);
            return {start(program, gain)};
        }
        return {};
    };
    for (std::size_t spoilt = 0; tally.count() < count;) {
        for (const auto& check : begin()) {
            if (check.isMeasured || ++spoilt > mostSpoilt * count) {
                tally.add(check);
            }
        }
    }
    return tally;
}

} // namespace fadewell::integration
