#include "ui/PanelWindow.h"
#include "ui/preview/PreviewMixer.h"
#include "ui/style/Theme.h"

#include <QGuiApplication>
#include <QImage>
#include <QQuickItem>
#include <QQuickWindow>
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
    std::string picture; ///< empty: stay open
    std::string menu;    ///< what to click first
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
    app.add_flag("--dark", options.appearance.isDark, "Dark colours");
    app.add_flag("--contrast", options.appearance.isHighContrast, "Strong colours");
    app.add_flag("--reduce-motion", options.appearance.reduceMotion, "No animation");
    app.add_option("--text-scale", options.appearance.textScale, "Size of texts")
        ->check(CLI::Range(0.5, 3.0));
    app.add_option("--picture", options.picture, "Write a picture of the panel there and end");
    app.add_option("--open", options.menu, "Object name of a button to press first");
    app.add_flag("--window", options.isWindow, "An ordinary window instead of a drop-down");
}

QQuickWindow* panelWindow()
{
    const auto windows = QGuiApplication::topLevelWindows();
    return windows.isEmpty() ? nullptr : qobject_cast<QQuickWindow*>(windows.front());
}

/// Items of lists are no child objects of their window, only child items.
QQuickItem* findItem(QQuickItem* item, const QString& name)
{
    if (item->objectName() == name) {
        return item;
    }
    for (auto* child : item->childItems()) {
        if (auto* found = findItem(child, name)) {
            return found;
        }
    }
    return nullptr;
}

void press(const std::string& name)
{
    auto* item = findItem(panelWindow()->contentItem(), QString::fromStdString(name));
    if (item == nullptr || !QMetaObject::invokeMethod(item, "clicked")) {
        std::fprintf(stderr, "panel_preview: no button %s\n", name.c_str());
    }
}

void takePicture(const std::string& path)
{
    auto* window = panelWindow();
    const bool isSaved =
        window != nullptr && window->grabWindow().save(QString::fromStdString(path));
    if (!isSaved) {
        std::fprintf(stderr, "panel_preview: can't write %s\n", path.c_str());
    }
    QCoreApplication::exit(isSaved ? 0 : 1);
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
    if (!options.menu.empty()) {
        QTimer::singleShot(3200, [&] { press(options.menu); });
    }
    if (!options.picture.empty()) {
        QTimer::singleShot(3800, [&] { takePicture(options.picture); });
    }
    return QCoreApplication::exec();
}
