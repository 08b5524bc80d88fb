#include "main/Options.h"

#include <CLI/CLI.hpp>

namespace fadewell {

std::optional<Options> Options::parse(int argc, const char* const* argv, int& exitStatus)
{
    constexpr int wrongUsage = 2;
    CLI::App app("Gives every app its own volume, from an icon in the tray, or with fadewellctl.",
                 "fadewell");
    Options options;
    app.set_version_flag("--version", "fadewell " FADEWELL_VERSION);
    auto* show = app.add_flag("--show", options.isShowing, "Open the mixer");
    auto* headless = app.add_flag(
        "--headless", options.isHeadless, "Run without windows and without an icon in the tray");
    show->excludes(headless);
    app.add_flag("--background", options.isBackground, "Start quietly, as at login");
    app.add_flag("--verbose", options.isVerbose, "Log debug messages as well");
    app.add_flag("--unsupervised",
                 options.isUnsupervised,
                 "Run in one process, for debuggers: nobody ends it when it hangs");
    app.footer(
        "Exit status: 0 ended or already running, 1 could not start, 2 wrong usage, 3 failed\n"
        "again after it had been restarted.\n\n"
        "Examples:\n  fadewell\n  fadewell --show\n  fadewell --headless --verbose");
    try {
        app.parse(argc, argv);
        return options;
    } catch (const CLI::ParseError& error) {
        exitStatus = app.exit(error) == 0 ? 0 : wrongUsage;
        return std::nullopt;
    }
}

} // namespace fadewell
