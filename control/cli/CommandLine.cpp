#include "control/cli/CommandLine.h"

#include "control/cli/Commands.h"
#include "control/cli/Failure.h"
#include "control/cli/Watch.h"

#include <QDBusConnection>

#include <CLI/CLI.hpp>
#include <cstdio>
#include <functional>

namespace fadewell::cli {
namespace {

/// Everything that can be typed, and the command that was.
struct Typed {
    bool isJson = false;
    bool isAll = false;
    bool isWithoutNames = false;
    std::string app{};
    std::string value{};
    std::string action{};
    CallSettingsChange callSettings{};
    /// Prints by itself when it answers nothing.
    std::function<std::optional<Output>(const MixerClient&)> command{};
    /// Set for a command that needs no running program.
    std::function<Output()> offline{};
};

using Command = std::function<Output(const MixerClient&)>;

CLI::App* add(CLI::App& app,
              Typed& typed,
              const std::string& name,
              const std::string& description,
              const std::string& examples,
              Command command)
{
    auto* added = app.add_subcommand(name, description);
    added->add_flag("--json", typed.isJson, "Print JSON");
    added->footer("Examples:\n" + examples);
    added->callback([&typed, command = std::move(command)] { typed.command = command; });
    return added;
}

void addLists(CLI::App& app, Typed& typed)
{
    add(app,
        typed,
        "apps",
        "List the apps that play sound",
        "  fadewellctl apps\n  fadewellctl apps --json",
        apps);
    add(app, typed, "outputs", "List the outputs", "  fadewellctl outputs", outputs);
}

void addVolume(CLI::App& app, Typed& typed)
{
    auto* command = add(app,
                        typed,
                        "volume",
                        "Show, set or change an app's volume",
                        "  fadewellctl volume firefox\n  fadewellctl volume firefox 40%\n"
                        "  fadewellctl volume \"Google Chrome\" -10%",
                        [&](const auto& client) { return volume(client, typed.app, typed.value); });
    command->add_option("APP", typed.app, "Identifier, name, or a part of one")->required();
    command->add_option("VOLUME", typed.value, "0% to 100% (40% or 0.4); +10% or -10% changes it");
}

void addMute(CLI::App& app, Typed& typed)
{
    auto* command = add(app,
                        typed,
                        "mute",
                        "Mute an app, or let it be heard again",
                        "  fadewellctl mute spotify on\n  fadewellctl mute spotify toggle",
                        [&](const auto& client) { return mute(client, typed.app, typed.action); });
    command->add_option("APP", typed.app, "Identifier, name, or a part of one")->required();
    command->add_option("ACTION", typed.action, "on, off or toggle")
        ->required()
        ->check(CLI::IsMember({"on", "off", "toggle"}));
}

void addOutput(CLI::App& app, Typed& typed)
{
    auto* command = add(app,
                        typed,
                        "output",
                        "Choose where an app plays",
                        "  fadewellctl output spotify headphones\n"
                        "  fadewellctl output spotify system",
                        [&](const auto& client) { return output(client, typed.app, typed.value); });
    command->add_option("APP", typed.app, "Identifier, name, or a part of one")->required();
    command
        ->add_option(
            "OUTPUT", typed.value, "UID, name, or a part of one; \"system\" follows the system")
        ->required();
}

void addForget(CLI::App& app, Typed& typed)
{
    auto* command = add(app,
                        typed,
                        "forget",
                        "Forget what is remembered for an app, or for all",
                        "  fadewellctl forget firefox\n  fadewellctl forget --all",
                        [&](const auto& client) {
                            if (!typed.isAll && typed.app.empty()) {
                                throw Failure(ExitCode::usage, "Name an APP, or --all.");
                            }
                            return typed.isAll ? forgetAll(client) : forget(client, typed.app);
                        });
    auto* name = command->add_option("APP", typed.app, "Identifier, name, or a part of one");
    auto* all = command->add_flag("--all", typed.isAll, "Forget every app");
    name->excludes(all);
}

void addMicrophone(CLI::App& app, Typed& typed)
{
    auto* command =
        add(app,
            typed,
            "microphone",
            "Show or switch the microphone, or set its volume",
            "  fadewellctl microphone\n  fadewellctl microphone off\n"
            "  fadewellctl microphone volume 70%",
            [&](const auto& client) { return microphone(client, typed.action, typed.value); });
    command->add_option("ACTION", typed.action, "on, off (muted for all apps), toggle or volume")
        ->check(CLI::IsMember({"on", "off", "toggle", "volume"}));
    command->add_option("VOLUME", typed.value, "0% to 100%, after \"volume\"");
}

void addCallMode(CLI::App& app, Typed& typed)
{
    auto* command = add(app,
                        typed,
                        "call-mode",
                        "Show or switch call mode, which lowers other apps",
                        "  fadewellctl call-mode on\n  fadewellctl call-mode auto",
                        [&](const auto& client) { return callMode(client, typed.action); });
    command->add_option("MODE", typed.action, "on, off, toggle, or auto to follow calls")
        ->check(CLI::IsMember({"on", "off", "toggle", "auto"}));
}

void addCallSettings(CLI::App& app, Typed& typed)
{
    auto& change = typed.callSettings;
    auto* command =
        add(app,
            typed,
            "call-settings",
            "Show or change how call mode works",
            "  fadewellctl call-settings --automatic on --level 20%\n"
            "  fadewellctl call-settings --exclude com.google.Chrome",
            [&](const auto& client) { return callSettings(client, typed.callSettings); });
    command->add_option("--automatic", change.automatic, "on: calls switch call mode by themselves")
        ->check(CLI::IsMember({"on", "off"}));
    command->add_option("--level", change.level, "What other apps are lowered to, 0% to 100%");
    command->add_option("--exclude", change.exclude, "A call app that is to count no longer");
    command->add_option("--include", change.include, "A call app that is to count again");
}

// What the keyboard shortcuts do, by the same names: for desktops that start commands by a key.
void addShortcuts(CLI::App& app, Typed& typed)
{
    add(app,
        typed,
        "toggle-microphone",
        "Turn the microphone on or off",
        "  fadewellctl toggle-microphone",
        [](const auto& client) { return microphone(client, "toggle", ""); });
    add(app,
        typed,
        "toggle-call-mode",
        "Turn call mode on or off",
        "  fadewellctl toggle-call-mode",
        [](const auto& client) { return callMode(client, "toggle"); });
    add(app,
        typed,
        "raise-frontmost",
        "Turn up the app in front",
        "  fadewellctl raise-frontmost",
        [](const auto& client) { return stepFrontmost(client, true); });
    add(app,
        typed,
        "lower-frontmost",
        "Turn down the app in front",
        "  fadewellctl lower-frontmost",
        [](const auto& client) { return stepFrontmost(client, false); });
}

void addRest(CLI::App& app, Typed& typed)
{
    add(app,
        typed,
        "permission",
        "Show whether Fadewell may change other programs' sound",
        "  fadewellctl permission",
        permission);
    add(app,
        typed,
        "login-item",
        "Show or choose whether Fadewell starts with your session",
        "  fadewellctl login-item\n  fadewellctl login-item on",
        [&](const auto& client) { return loginItem(client, typed.action); })
        ->add_option("ACTION", typed.action, "on or off")
        ->check(CLI::IsMember({"on", "off"}));
    add(app, typed, "show", "Open the mixer", "  fadewellctl show", show);
    add(app, typed, "settings", "Open the settings", "  fadewellctl settings", settings);
    add(app, typed, "quit", "End Fadewell", "  fadewellctl quit", quit);
    auto* watcher = add(app,
                        typed,
                        "watch",
                        "Print the state and then every change, until Fadewell ends",
                        "  fadewellctl watch\n  fadewellctl watch --json",
                        {});
    watcher->callback([&typed] {
        typed.command = [&typed](const MixerClient& client) -> std::optional<Output> {
            Watch(client, typed.isJson).run();
            return std::nullopt;
        };
    });
    auto* words = add(app,
                      typed,
                      "complete",
                      "Words for the shell",
                      "  fadewellctl complete apps",
                      [&](const auto& client) { return complete(client, typed.action); });
    words->group(""); // For the completion script, not for people.
    words->add_option("WHAT", typed.action)
        ->required()
        ->check(CLI::IsMember({"apps", "outputs", "call-apps"}));
}

void addDoctor(CLI::App& app, Typed& typed, const std::string& version, const Diagnose& diagnose)
{
    auto* command = add(app,
                        typed,
                        "doctor",
                        "Say what works on this machine and what doesn't, and why",
                        "  fadewellctl doctor\n  fadewellctl doctor --json",
                        {});
    command->callback([&typed, version, diagnose] {
        typed.offline = [version, diagnose] {
            return doctor(version, diagnose);
        };
    });
}

void addDiagnostics(CLI::App& app, Typed& typed, const LocalDiagnostics& local)
{
    auto* command = add(app,
                        typed,
                        "diagnostics",
                        "Gather what helps to find a fault into one text; nothing is sent",
                        "  fadewellctl diagnostics\n"
                        "  fadewellctl diagnostics --without-names > fadewell.txt",
                        {});
    command->add_flag(
        "--without-names", typed.isWithoutNames, "Call apps \"app 1\", \"app 2\" and so on");
    command->callback([&typed, local] {
        typed.offline = [&typed, local] {
            return diagnostics(!typed.isWithoutNames, local);
        };
    });
}

void build(CLI::App& app, Typed& typed, const std::string& version)
{
    app.name("fadewellctl");
    app.set_version_flag("--version", "fadewellctl " + version);
    app.require_subcommand(1);
    app.fallthrough();
    app.add_flag("--json", typed.isJson, "Print JSON");
    app.footer("APP is an app's identifier, its name, or an unambiguous part of one.\n"
               "Exit status: 0 done, 1 failed, 2 wrong usage, 3 Fadewell is not running,\n"
               "4 no such app, 5 ambiguous.\n\n"
               "Examples:\n"
               "  fadewellctl apps\n"
               "  fadewellctl volume firefox 40%\n"
               "  fadewellctl microphone toggle");
    addLists(app, typed);
    addVolume(app, typed);
    addMute(app, typed);
    addOutput(app, typed);
    addForget(app, typed);
    addMicrophone(app, typed);
    addCallMode(app, typed);
    addCallSettings(app, typed);
    addShortcuts(app, typed);
    addRest(app, typed);
}

std::optional<Output> carryOut(const Typed& typed)
{
    return typed.offline ? typed.offline()
                         : typed.command(MixerClient(QDBusConnection::sessionBus()));
}

int execute(const Typed& typed)
{
    if (const auto output = carryOut(typed)) {
        const auto text = typed.isJson ? dump(output->json, 2) + '\n' : output->text;
        std::fputs(text.c_str(), stdout);
    }
    return static_cast<int>(ExitCode::success);
}

} // namespace

int run(int argc,
        const char* const* argv,
        const std::string& version,
        const Diagnose& diagnose,
        const LocalDiagnostics& localDiagnostics)
{
    CLI::App app("Gives every app its own volume: the command line of Fadewell.");
    Typed typed;
    build(app, typed, version);
    addDoctor(app, typed, version, diagnose);
    addDiagnostics(app, typed, localDiagnostics);
    try {
        app.parse(argc, argv);
        return execute(typed);
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? 0 : static_cast<int>(ExitCode::usage);
    } catch (const Failure& failure) {
        std::fprintf(stderr, "fadewellctl: %s\n", failure.what());
        return static_cast<int>(failure.code());
    }
}

} // namespace fadewell::cli
