#include "ui/forms/HelpWindow.h"
#include "ui/onboarding/OnboardingWindow.h"
#include "ui/preview/WindowsStage.h"
#include "ui/settings/SettingsWindow.h"
#include "ui/style/Language.h"
#include "ui/style/Theme.h"

#include <QGuiApplication>
#include <QImage>
#include <QLocale>
#include <QQuickView>
#include <QTimer>

#include <CLI/CLI.hpp>
#include <cstdio>
#include <map>
#include <string>

namespace {

using namespace fadewell;

struct Options {
    std::string window = "settings";
    std::string pane = "general";
    WindowsStage::Situation situation;
    Appearance appearance{};
    std::string picture; ///< empty: stay open
    std::vector<std::string> presses;
    std::string language = "en";
};

void addOptions(CLI::App& app, Options& options)
{
    using Support = shortcuts::HotKeyService::Support;
    static const std::map<std::string, Support> supports{
        {"any", Support::any}, {"portal", Support::portal}, {"none", Support::none}};
    app.add_option("--window", options.window, "settings, onboarding or help");
    app.add_option("--pane", options.pane, "general, calls, apps or shortcuts");
    app.add_flag("--empty", options.situation.isEmpty, "Nothing remembered or installed");
    app.add_flag("!--denied", options.situation.isPermitted, "Without the permission");
    app.add_flag("--hanging", options.situation.isHanging, "The permission is never answered");
    app.add_flag("!--no-tray", options.situation.hasTray, "Without a tray");
    app.add_flag("--approval", options.situation.needsApproval, "A login item to be allowed");
    app.add_option("--shortcuts", options.situation.support, "What the desktop offers")
        ->transform(CLI::CheckedTransformer(supports));
    app.add_flag("--dark", options.appearance.isDark, "Dark colours");
    app.add_flag("--contrast", options.appearance.isHighContrast, "Strong colours");
    app.add_flag("--reduce-motion", options.appearance.reduceMotion, "No animation");
    app.add_option("--text-scale", options.appearance.textScale, "Size of texts")
        ->check(CLI::Range(0.5, 3.0));
    app.add_option("--language", options.language, "Language of the texts");
    app.add_option("--press", options.presses, "Object names of what to press first, in order");
    app.add_option("--picture", options.picture, "Write a picture of the window there and end");
}

QQuickWindow* window()
{
    const auto windows = QGuiApplication::topLevelWindows();
    return windows.isEmpty() ? nullptr : qobject_cast<QQuickWindow*>(windows.front());
}

void press(const std::string& name)
{
    auto* item = window()->findChild<QObject*>(QString::fromStdString(name));
    if (item == nullptr || !QMetaObject::invokeMethod(item, "clicked")) {
        std::fprintf(stderr, "windows_preview: no \"%s\" to press\n", name.c_str());
    }
}

void takePicture(const std::string& path)
{
    const bool isSaved =
        window() != nullptr && window()->grabWindow().save(QString::fromStdString(path));
    if (!isSaved) {
        std::fprintf(stderr, "windows_preview: can't write %s\n", path.c_str());
    }
    QCoreApplication::exit(isSaved ? 0 : 1);
}

} // namespace

/// Shows a window in a situation that is chosen on the command line; for developers.
int main(int argc, char** argv)
{
    qputenv("QT_QUICK_BACKEND", "software");
    const QGuiApplication application(argc, argv);
    CLI::App app("Shows the settings or the onboarding over simulated systems");
    Options options;
    addOptions(app, options);
    CLI11_PARSE(app, argc, argv);

    QLocale::setDefault(QLocale(QString::fromStdString(options.language)));
    installLanguage();
    WindowsStage stage(options.situation);
    stage.defaults().set("settingsPane", options.pane);
    Theme::instance().setAppearance(options.appearance);
    SettingsWindow settings(stage.parts());
    OnboardingWindow onboarding(stage.onboardingParts());
    HelpWindow help;
    if (options.window == "onboarding") {
        onboarding.show();
    } else if (options.window == "help") {
        help.show(options.pane == "loginItems" ? SystemPage::loginItems
                                               : SystemPage::audioPermission);
    } else {
        settings.show();
    }
    int delay = 700;
    for (const auto& name : options.presses) {
        QTimer::singleShot(delay += 300, [name] { press(name); });
    }
    if (!options.picture.empty()) {
        QTimer::singleShot(delay + 700, [&] { takePicture(options.picture); });
    }
    return QCoreApplication::exec();
}
