// fadewell-demo-table [FADEWELLCTL]: the mixer as a live text table, with the level that each
// output really plays. Redraws in place on a terminal, prints plain lines every two seconds
// elsewhere.

#include "demo/MixerTable.h"

#include <pipewire/pipewire.h>

#include <array>
#include <csignal>
#include <cstdio>
#include <fcntl.h>
#include <memory>
#include <string>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace fadewell::demo {
namespace {

class Table {
public:
    Table();
    ~Table();
    /// Returns the exit code.
    int run(const char* fadewellctl);

private:
    static void onSignal(void* data, int);
    static void onStates(void* data, int file, std::uint32_t mask);
    static void onTick(void* data, std::uint64_t);

    void quit() { pw_main_loop_quit(loop_); }
    bool startFeed(const char* fadewellctl);
    void read(int file);
    void take(const std::string& line);
    void draw();

    pw_main_loop* loop_ = nullptr;
    pw_context* context_ = nullptr;
    pw_core* core_ = nullptr;
    pid_t feed_ = -1;
    int feedOutput_ = -1;
    int result_ = 0;
    std::string unread_;
    nlohmann::json state_;
    std::map<std::string, std::unique_ptr<LevelMeter>> meters_;
    bool isTerminal_ = isatty(STDOUT_FILENO) == 1;
};

Table::Table()
{
    pw_init(nullptr, nullptr);
    loop_ = pw_main_loop_new(nullptr);
    context_ = pw_context_new(pw_main_loop_get_loop(loop_), nullptr, 0);
    core_ = pw_context_connect(context_, nullptr, 0);
}

Table::~Table()
{
    meters_.clear();
    if (feed_ > 0) {
        kill(feed_, SIGTERM);
        waitpid(feed_, nullptr, 0);
    }
    if (core_) {
        pw_core_disconnect(core_);
    }
    pw_context_destroy(context_);
    pw_main_loop_destroy(loop_);
}

int Table::run(const char* fadewellctl)
{
    auto* loop = pw_main_loop_get_loop(loop_);
    for (const int number : {SIGINT, SIGTERM, SIGHUP}) {
        pw_loop_add_signal(loop, number, &Table::onSignal, this);
    }
    if (!core_) {
        std::fputs("no sound server to measure\n", stderr);
        return 1;
    }
    if (!startFeed(fadewellctl)) {
        std::fprintf(stderr, "can't start %s\n", fadewellctl);
        return 1;
    }
    pw_loop_add_io(
        loop, feedOutput_, SPA_IO_IN | SPA_IO_HUP | SPA_IO_ERR, true, &Table::onStates, this);
    auto* timer = pw_loop_add_timer(loop, &Table::onTick, this);
    timespec interval = isTerminal_ ? timespec{0, 250'000'000} : timespec{2, 0};
    pw_loop_update_timer(loop, timer, &interval, &interval, false);
    pw_main_loop_run(loop_);
    if (isTerminal_) {
        std::fputs("\n", stdout);
    }
    return result_;
}

bool Table::startFeed(const char* fadewellctl)
{
    std::array<int, 2> ends{};
    if (pipe2(ends.data(), O_CLOEXEC) != 0) {
        return false;
    }
    feed_ = fork();
    if (feed_ == 0) {
        // The signals that end the table are blocked here, and a program inherits that.
        sigset_t none;
        sigemptyset(&none);
        sigprocmask(SIG_SETMASK, &none, nullptr);
        prctl(PR_SET_PDEATHSIG, SIGTERM);
        dup2(ends[1], STDOUT_FILENO);
        execlp(fadewellctl, fadewellctl, "watch", "--json", nullptr);
        _exit(127);
    }
    close(ends[1]);
    feedOutput_ = ends[0];
    return feed_ > 0;
}

void Table::onSignal(void* data, int)
{
    static_cast<Table*>(data)->quit();
}

void Table::onStates(void* data, int file, std::uint32_t)
{
    static_cast<Table*>(data)->read(file);
}

void Table::onTick(void* data, std::uint64_t)
{
    static_cast<Table*>(data)->draw();
}

void Table::read(int file)
{
    std::array<char, 4096> part{};
    const ssize_t count = ::read(file, part.data(), part.size());
    if (count <= 0) {
        std::fputs("Fadewell has quit.\n", stderr);
        result_ = 1;
        quit();
        return;
    }
    unread_.append(part.data(), static_cast<std::size_t>(count));
    for (auto end = unread_.find('\n'); end != std::string::npos; end = unread_.find('\n')) {
        take(unread_.substr(0, end));
        unread_.erase(0, end + 1);
    }
}

void Table::take(const std::string& line)
{
    auto state = nlohmann::json::parse(line, nullptr, false);
    if (!state.is_object()) {
        return;
    }
    state_ = std::move(state);
    std::map<std::string, std::unique_ptr<LevelMeter>> meters;
    for (const auto& output : state_.value("outputs", nlohmann::json::array())) {
        const auto id = output.value("id", std::string());
        auto& old = meters_[id];
        meters[id] = old ? std::move(old) : std::make_unique<LevelMeter>(core_, id);
    }
    meters_ = std::move(meters);
}

void Table::draw()
{
    Levels levels;
    for (const auto& [id, meter] : meters_) {
        levels[id] = meter->take();
    }
    if (isTerminal_) {
        std::fputs("\033[H\033[2J", stdout);
    }
    const auto lines = mixerTable(state_, levels);
    std::fprintf(stdout, "%s\n", lines.c_str());
    if (isTerminal_) {
        std::fputs("Ctrl-C ends it.", stdout);
    }
    std::fflush(stdout);
}

} // namespace
} // namespace fadewell::demo

int main(int argc, char** argv)
{
    return fadewell::demo::Table().run(argc > 1 ? argv[1] : "fadewellctl");
}
