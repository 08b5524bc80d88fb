#include "ui/windows/DesktopWindows.h"

#include "ui/style/MenuTracking.h"
#include "ui/style/Theme.h"
#include "ui/tray/TrayLook.h"

#include <QCursor>
#include <QDBusConnection>
#include <QGuiApplication>

#include <utility>

namespace fadewell {
namespace {

/// Whether the user wants the icon; on unless switched off.
constexpr const char* insertedKey = "showInMenuBar";

QString desktops()
{
    return qEnvironmentVariable("XDG_CURRENT_DESKTOP");
}

bool isOnX11()
{
    return QGuiApplication::platformName() == "xcb";
}

ScrollSteps::Host scrollHost()
{
    const auto names = desktops().split(':');
    return names.contains("KDE") || names.contains("LXQt") ? ScrollSteps::Host::sendsAngles
                                                           : ScrollSteps::Host::unknown;
}

} // namespace

DesktopWindows::DesktopWindows(WindowsParts parts, std::optional<QString> build)
    : parts_(std::move(parts))
    , build_(std::move(build))
    , keys_(parts_.shortcuts ? std::make_unique<LocalKeyFilter>(parts_.shortcuts) : nullptr)
    , systemPages_(std::make_shared<SystemPages>(
          SystemPages::ofSession([this](SystemPage page) { help_.show(page); })))
    , diagnostics_(parts_.diagnostics)
    , settings_(settingsParts())
    , onboarding_(onboardingParts())
    , panel_(
          {.model = parts_.model, .workspace = parts_.workspace, .tappability = parts_.tappability},
          panelActions())
{}

void DesktopWindows::showIcon()
{
    tray_ = std::make_unique<Tray>(
        TrayActions::Parts{.model = parts_.model,
                           .windows = *this,
                           .togglePanel = [this](const auto& icon) { togglePanel(icon); },
                           .quit = parts_.quit},
        Tray::Options{.canEmbed = isOnX11(), .host = scrollHost()});
    const auto followAppearance = [this] {
        tray_->setLook(TrayLook::of(desktops(), Theme::instance().isDark()));
    };
    followAppearance();
    QObject::connect(&Theme::instance(), &Theme::changed, tray_.get(), followAppearance);
    QObject::connect(
        tray_.get(), &Tray::menuTracked, &MenuTracking::instance(), &MenuTracking::setTracking);
    notice_ = std::make_unique<MissingTrayNotice>(
        *tray_,
        MissingTrayNotice::Parts{.mainQueue = parts_.mainQueue,
                                 .defaults = parts_.defaults,
                                 .bus = QDBusConnection::sessionBus(),
                                 .openMixer = [this] {
                                     panel_.show();
                                 }});
    tray_->setInserted(parts_.defaults->get<bool>(insertedKey).value_or(true));
}

void DesktopWindows::openMixerAtStart()
{
    QMetaObject::invokeMethod(
        &panel_,
        [this] {
            if (!onboarding_.isOpen()) {
                panel_.show();
                return;
            }
            QObject::connect(
                &onboarding_,
                &ViewWindow::closed,
                &panel_,
                [this] { panel_.show(); },
                Qt::SingleShotConnection);
        },
        Qt::QueuedConnection);
}

bool DesktopWindows::offers(AppWindow /*window*/) const
{
    return true;
}

void DesktopWindows::show(AppWindow window)
{
    switch (window) {
    case AppWindow::panel:
        panel_.show();
        break;
    case AppWindow::settings:
        settings_.show();
        break;
    case AppWindow::onboarding:
        onboarding_.show();
        break;
    case AppWindow::about:
        about_.show();
        break;
    }
}

void DesktopWindows::togglePanel(const std::optional<QRect>& icon)
{
    if (!icon && isOnX11()) {
        panel_.toggle(QRect(QCursor::pos(), QSize(1, 1))); // The click was there.
    } else {
        panel_.toggle(icon);
    }
}

void DesktopWindows::setIconShown(bool isShown)
{
    if (tray_) {
        tray_->setInserted(isShown);
    }
}

bool DesktopWindows::isTrayMissing() const
{
    return tray_ && tray_->presence() == Tray::Presence::absent;
}

SettingsParts DesktopWindows::settingsParts()
{
    SettingsParts parts;
    parts.model = parts_.model;
    parts.workspace = parts_.workspace;
    parts.defaults = parts_.defaults;
    parts.loginItem = parts_.loginItem;
    parts.audioAccess = parts_.audioAccess;
    parts.soundServer = parts_.soundServer;
    parts.shortcuts = parts_.shortcuts;
    parts.systemPages = systemPages_;
    parts.version = QCoreApplication::applicationVersion();
    parts.build = build_;
    parts.showAbout = [this] {
        about_.show();
    };
    if (parts_.diagnostics) {
        parts.showDiagnostics = [this] {
            diagnostics_.show();
        };
    }
    parts.openMixer = [this] {
        panel_.show();
    };
    parts.setIconShown = [this](bool isShown) {
        setIconShown(isShown);
    };
    parts.isTrayMissing = [this] {
        return isTrayMissing();
    };
    return parts;
}

OnboardingParts DesktopWindows::onboardingParts()
{
    OnboardingParts parts;
    parts.defaults = parts_.defaults;
    parts.loginItem = parts_.loginItem;
    parts.audioAccess = parts_.audioAccess;
    parts.systemPages = systemPages_;
    parts.isTrayMissing = [this] {
        return isTrayMissing();
    };
    return parts;
}

PanelWindow::Actions DesktopWindows::panelActions()
{
    PanelWindow::Actions actions;
    actions.openSettings = [this] {
        settings_.show();
    };
    actions.openPermissionSettings = [this] {
        systemPages_->open(SystemPage::audioPermission);
    };
    actions.permissionSettingsTitle = systemPages_->openTitle(SystemPage::audioPermission);
    actions.showAbout = [this] {
        about_.show();
    };
    actions.quit = parts_.quit;
    return actions;
}

} // namespace fadewell
