#include "ui/PanelWindow.h"
#include "ui/preview/PreviewMixer.h"
#include "ui/preview/PreviewWindow.h"
#include "ui/style/Theme.h"

#include <QGuiApplication>
#include <QTimer>

#include <CLI/CLI.hpp>
#include <cstdio>
#include <map>
#include <string>

namespace {

using namespace fadewell;

struct Options {
    PreviewMixer::Scene scene = PreviewMixer::Scene::ordinary;
    Appearance appearance{};
    preview::Visit visit;
    bool isWindow = false;
};

void addOptions(CLI::App& app, Options& options)
{
    using Scene = PreviewMixer::Scene;
    static const std::map<std::string, Scene> scenes{{"ordinary", Scene::ordinary},
                                                     {"call", Scene::call},
                                                     {"muted", Scene::muted},
                                                     {"permission", Scene::permission},
                                                     {"empty", Scene::empty},
                                                     {"many", Scene::many},
                                                     {"devices", Scene::devices}};
    app.add_option("--scene", options.scene, "What the mixer shows")
        ->transform(CLI::CheckedTransformer(scenes));
    preview::addAppearanceOptions(app, options.appearance);
    preview::addVisitOptions(app, options.visit);
    app.add_flag("--window", options.isWindow, "An ordinary window instead of a drop-down");
}

PanelWindow::Actions actions()
{
    return {.openSettings = [] { std::puts("settings"); },
            .showAbout = [] { std::puts("about"); },
            .quit = [] { QCoreApplication::quit(); },
            .openPermissionSettings = [] { std::puts("permission settings"); },
            .permissionSettingsTitle = "Open System Settings"};
}

} // namespace

/// Shows the panel in a situation that is chosen on the command line; for developers.
int main(int argc, char** argv)
{
    const QGuiApplication application(argc, argv);
    CLI::App app("Shows the panel over a simulated sound system");
    Options options;
    addOptions(app, options);
    CLI11_PARSE(app, argc, argv);

    const PreviewMixer mixer(options.scene);
    PanelWindow panel(mixer.parts(), actions());
    Theme::instance().setAppearance(options.appearance);
    QTimer::singleShot(options.scene == PreviewMixer::Scene::call ? 2500 : 700, [&] {
        panel.show(options.isWindow ? std::nullopt : std::optional(QRect(600, 0, 24, 24)));
    });
    preview::visitLater(options.visit, 2900);
    return QCoreApplication::exec();
}
