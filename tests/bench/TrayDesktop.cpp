#include "tests/bench/TrayDesktop.h"

#include "tests/bench/ProcessMeter.h"

#include <QCoreApplication>
#include <QDBusMessage>

#include <chrono>
#include <csignal>
#include <fstream>
#include <stdexcept>
#include <thread>

namespace fadewell::integration {
namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

constexpr const char* connectionName = "tray-desktop";
constexpr auto longest = 15s;
constexpr auto look = 500us; // Between two looks: what is measured takes tens of milliseconds.

QDBusConnection connectToBus()
{
    // By address: the library keeps the bus of the first session otherwise.
    return QDBusConnection::connectToBus(qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS"),
                                         connectionName);
}

double millisecondsSince(Clock::time_point begin)
{
    return std::chrono::duration<double, std::milli>(Clock::now() - begin).count();
}

} // namespace

TrayDesktop::TrayDesktop()
    : tray_(connectToBus())
{}

TrayDesktop::~TrayDesktop()
{
    QDBusConnection::disconnectFromBus(connectionName);
}

Cost TrayDesktop::startFadewell()
{
    tray_.items.clear();
    const auto begin = Clock::now();
    fadewell_.emplace(std::vector<std::string>{FADEWELL_PROGRAMS "/fadewell"});
    await([this] { return !tray_.items.isEmpty(); }, "no icon came into the tray");
    const auto wall = millisecondsSince(begin);
    return {wall, processorTime(fadewell())};
}

Cost TrayDesktop::startOther(const std::string& program)
{
    const auto begin = Clock::now();
    other_.emplace(std::vector<std::string>{program});
    await([this] { return screen_.isPainted() || !other_->isRunning(); }, "no window came");
    return {millisecondsSince(begin), processorTime({other_->pid()})};
}

void TrayDesktop::endOther()
{
    other_.reset();
    await([this] { return screen_.isEmpty(); }, "a window stayed");
}

Cost TrayDesktop::openPanel()
{
    const auto before = processorTime(fadewell());
    const auto begin = Clock::now();
    click();
    await([this] { return screen_.isPainted(); }, "the panel didn't open");
    const auto wall = millisecondsSince(begin);
    return {wall, processorTime(fadewell()) - before};
}

void TrayDesktop::closePanel()
{
    click();
    await([this] { return screen_.isEmpty(); }, "the panel didn't close");
}

void TrayDesktop::endFadewell()
{
    fadewell_->signal(SIGTERM);
    if (fadewell_->wait() != 0) {
        throw std::runtime_error("Fadewell did not end well: " + fadewell_->errors());
    }
    fadewell_.reset();
}

std::vector<pid_t> TrayDesktop::fadewell() const
{
    const auto supervisor = std::to_string(fadewell_->pid());
    std::ifstream children("/proc/" + supervisor + "/task/" + supervisor + "/children");
    pid_t worker = 0;
    children >> worker;
    if (worker == 0) {
        throw std::runtime_error("Fadewell has ended: " + fadewell_->errors());
    }
    return {worker, fadewell_->pid()};
}

void TrayDesktop::click()
{
    auto message = QDBusMessage::createMethodCall(
        tray_.items.back(), "/StatusNotifierItem", "org.kde.StatusNotifierItem", "Activate");
    message << 1165 << 13;
    QDBusConnection(connectionName).send(message);
}

void TrayDesktop::await(const std::function<bool()>& isTrue, const std::string& otherwise)
{
    const auto end = Clock::now() + longest;
    while (!isTrue()) {
        if (Clock::now() >= end) {
            throw std::runtime_error(otherwise + (fadewell_ ? ": " + fadewell_->errors() : ""));
        }
        std::this_thread::sleep_for(look);
        QCoreApplication::processEvents();
    }
}

} // namespace fadewell::integration
