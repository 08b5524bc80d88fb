#include "ui/forms/HelpWindow.h"
#include "ui/onboarding/OnboardingWindow.h"
#include "ui/preview/PreviewWindow.h"
#include "ui/preview/WindowsStage.h"
#include "ui/settings/SettingsWindow.h"
#include "ui/style/Language.h"
#include "ui/style/Theme.h"

#include <QGuiApplication>
#include <QLocale>

#include <CLI/CLI.hpp>
#include <map>
#include <string>

namespace {

using namespace fadewell;

struct Options {
    std::string window = "settings";
    std::string pane = "general";
    WindowsStage::Situation situation;
    Appearance appearance{};
    preview::Visit visit;
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
    preview::addAppearanceOptions(app, options.appearance);
    preview::addVisitOptions(app, options.visit);
    app.add_option("--language", options.language, "Language of the texts");
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
    preview::visitLater(options.visit, 700);
    return QCoreApplication::exec();
}
