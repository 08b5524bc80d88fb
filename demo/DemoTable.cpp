// A live table: the apps, as `fadewellctl watch --json` tells them on standard input, and the level
// measured on every output. Ends with its input, on Ctrl-C, and with the sound server.
#include "demo/AppsFeed.h"
#include "demo/OutputMeters.h"
#include "demo/Screen.h"
#include "demo/TableText.h"

#include <pipewire/pipewire.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <memory>
#include <unistd.h>

namespace fadewell::demo {
namespace {

struct Table {
    pw_main_loop* loop = nullptr;
    pw_core* core = nullptr;
    std::unique_ptr<OutputMeters> meters;
    std::unique_ptr<Screen> screen;
    AppsFeed feed;
    const char* end = nullptr; ///< why it ends, when nobody asked
};

void quit(Table& table, const char* why)
{
    table.end = why;
    pw_main_loop_quit(table.loop);
}

void onSignal(void* data, int)
{
    quit(*static_cast<Table*>(data), nullptr);
}

void onTick(void* data, std::uint64_t)
{
    auto& table = *static_cast<Table*>(data);
    table.screen->show(tableLines(table.feed.rows(), table.meters->take()));
}

void onInput(void* data, int, std::uint32_t)
{
    auto& table = *static_cast<Table*>(data);
    std::array<char, 16'384> bytes{};
    const ssize_t count = read(STDIN_FILENO, bytes.data(), bytes.size());
    if (count > 0) {
        table.feed.add({bytes.data(), static_cast<std::size_t>(count)});
    } else if (count == 0 || (errno != EINTR && errno != EAGAIN)) {
        quit(table, "Fadewell has ended.");
    }
}

void onCoreError(void* data, std::uint32_t id, int, int result, const char*)
{
    if (id == PW_ID_CORE && result == -EPIPE) {
        quit(*static_cast<Table*>(data), "The sound server has ended.");
    }
}

void showUntilEnded(Table& table)
{
    pw_loop* loop = pw_main_loop_get_loop(table.loop);
    pw_core_events events{};
    events.version = PW_VERSION_CORE_EVENTS;
    events.error = onCoreError;
    spa_hook listener{};
    pw_core_add_listener(table.core, &listener, &events, &table);
    table.meters = std::make_unique<OutputMeters>(table.core);
    table.screen = std::make_unique<Screen>();
    pw_loop_add_io(loop, STDIN_FILENO, SPA_IO_IN | SPA_IO_HUP, false, onInput, &table);
    spa_source* timer = pw_loop_add_timer(loop, onTick, &table);
    timespec second{1, 0};
    pw_loop_update_timer(loop, timer, &second, &second, false);
    pw_main_loop_run(table.loop);
    table.screen.reset();
    table.meters.reset();
    spa_hook_remove(&listener);
}

int run()
{
    Table table;
    pw_init(nullptr, nullptr);
    table.loop = pw_main_loop_new(nullptr);
    pw_loop* loop = pw_main_loop_get_loop(table.loop);
    // Before the data thread exists, which inherits the blocked signals.
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        pw_loop_add_signal(loop, signal, onSignal, &table);
    }
    pw_context* context = pw_context_new(loop, nullptr, 0);
    table.core = context != nullptr ? pw_context_connect(context, nullptr, 0) : nullptr;
    if (table.core != nullptr) {
        showUntilEnded(table);
        pw_core_disconnect(table.core);
    } else {
        table.end = "No sound server answers.";
    }
    if (context != nullptr) {
        pw_context_destroy(context);
    }
    pw_main_loop_destroy(table.loop);
    pw_deinit();
    if (table.end != nullptr) {
        std::fprintf(stderr, "%s\n", table.end);
    }
    return table.end != nullptr ? 1 : 0;
}

} // namespace
} // namespace fadewell::demo

int main()
{
    return fadewell::demo::run();
}
