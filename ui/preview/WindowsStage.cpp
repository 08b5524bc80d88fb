#include "ui/preview/WindowsStage.h"

#include "base/ThreadQueue.h"
#include "control/QtMainQueue.h"
#include "shortcuts/Modifiers.h"

#include <QCoreApplication>

#include <array>
#include <cstdio>
#include <utility>

namespace fadewell {
namespace {

struct Installed {
    const char* bundleID;
    const char* name;
    const char* icon;
};

constexpr std::array<Installed, 6> installedApps{
    {{"us.zoom.xos", "Zoom", "Zoom"},
     {"com.hnc.Discord", "Discord", "discord"},
     {"org.telegram.desktop", "Telegram", "telegram"},
     {"org.mozilla.firefox", "Firefox", "firefox-esr"},
     {"com.google.Chrome", "Chromium", "chromium"},
     {"org.example.music",
      "An application with a <b>name</b> that is too long",
      "multimedia-audio-player"}}};

} // namespace

/// A desktop with a few apps installed.
struct WindowsStage::Desktop final : Workspace {
    bool isEmpty = false;

    [[nodiscard]] std::vector<RunningApplication> runningApplications() override { return {}; }
    [[nodiscard]] Subscription onLaunch(std::function<void()> /*launched*/) override { return {}; }
    [[nodiscard]] std::optional<RunningApplication> frontmost() override { return std::nullopt; }
    [[nodiscard]] std::optional<AppLocation> location(std::string_view bundleID) override
    {
        for (const auto& app : installedApps) {
            if (!isEmpty && app.bundleID == bundleID) {
                return AppLocation{app.bundleID, app.name, {app.icon, {}}};
            }
        }
        return std::nullopt;
    }
    [[nodiscard]] AppLocation describe(std::string_view path) override
    {
        return {std::string(path), std::string(path), {}};
    }
    void announce(std::string_view /*text*/, int /*priority*/) override {}
    [[nodiscard]] std::int32_t ownPID() const override { return 1; }
};

struct WindowsStage::Server final : SoundServerInfo {
    [[nodiscard]] State soundServer() override { return {"PipeWire", "0.3.65", true}; }
};

WindowsStage::WindowsStage(const Situation& situation)
    : situation_(situation)
    , mainQueue_(std::make_shared<QtMainQueue>(clock_))
    , hardware_(SimulatedHardware::create(std::make_shared<ThreadQueue>("simulation", clock_)))
    , desktop_(std::make_shared<Desktop>())
    , server_(std::make_shared<Server>())
{
    desktop_->isEmpty = situation.isEmpty;
    hardware_->setCapturePermitted(situation.isPermitted);
    hardware_->addDevice({.uid = "speakers", .name = "Speakers"}); // Asking plays to it.
    const auto service = std::make_shared<SimulatedLoginItemService>();
    service->current = situation.needsApproval ? LoginItemStatus::requiresApproval
                                               : LoginItemStatus::notRegistered;
    loginItem_ = std::make_shared<LoginItem>(service);
    audioAccess_ =
        situation.isHanging ? nullptr : std::make_shared<AudioAccess>(engine(), mainQueue_);
    createModel();
    if (!situation.isEmpty) {
        remember();
    }
    assignShortcuts(situation.support);
    cycles_ = hardware_->runCycles(1024, 0.1);
}

WindowsStage::~WindowsStage()
{
    model_->stop();
}

EngineContext WindowsStage::engine() const
{
    return {hardware_, lookup_, clock_, [clock = clock_](const auto& label) {
                return std::make_shared<ThreadQueue>(label, clock);
            }};
}

void WindowsStage::createModel()
{
    const auto context = engine();
    model_ = MixerModel::create(
        {.mainQueue = mainQueue_,
         .workspace = desktop_,
         .defaults = defaults_,
         .monitor = ProcessMonitor::create(context),
         .devices = DeviceMonitor::create(context),
         .taps = TapManager::create(context),
         .microphoneController = MicrophoneController::create(context, defaults_),
         .store = std::make_shared<AppSettingsStore>(defaults_)});
    model_->start();
}

void WindowsStage::remember()
{
    model_->setVolume(0.4, "org.mozilla.firefox");
    model_->setOutput("airpods", "AirPods Pro", "org.mozilla.firefox");
    model_->setVolume(0.7, "com.hnc.Discord");
    model_->setVolume(0.25, "org.example.music");
    model_->setOutput("dac", "Converter with a remarkably long name", "org.example.music");
    model_->setMuted(true, "org.example.music");
    model_->setVolume(0.9, "org.telegram.desktop");
    model_->setOutput("gone", std::nullopt, "org.telegram.desktop");
}

void WindowsStage::assignShortcuts(shortcuts::HotKeyService::Support support)
{
    using namespace shortcuts;
    keys_->offered = support;
    keys_->characters = {{46, "m"}, {8, "c"}};
    keys_->system = {{8, classic::control | classic::option}};
    keys_->triggers = {{"toggleMicrophone", "Super+Alt+M"}, {"raiseFrontmostApp", "Super+Up"}};
    shortcuts_ = KeyboardShortcuts::create(mainQueue_, defaults_, keys_);
    keyFilter_ = std::make_unique<LocalKeyFilter>(shortcuts_);
    shortcuts_->storeShortcut(Shortcut{46, classic::control | classic::option},
                              Name{"toggleMicrophone"});
    shortcuts_->storeShortcut(Shortcut{126, classic::control | classic::shift | classic::command},
                              Name{"raiseFrontmostApp"});
}

SettingsParts WindowsStage::parts() const
{
    SettingsParts parts;
    parts.model = model_;
    parts.workspace = desktop_;
    parts.defaults = defaults_;
    parts.loginItem = loginItem_;
    parts.audioAccess = audioAccess_;
    parts.soundServer = server_;
    parts.shortcuts = shortcuts_;
    parts.systemPages = std::make_shared<SystemPages>(SystemPages::ofSession(
        [](SystemPage page) { std::printf("page %d\n", static_cast<int>(page)); }));
    parts.version = QStringLiteral("0.1.0");
    parts.build = QStringLiteral("214");
    parts.showAbout = [] {
        std::puts("about");
    };
    parts.openMixer = [] {
        std::puts("mixer");
    };
    parts.isTrayMissing = [hasTray = situation_.hasTray] {
        return !hasTray;
    };
    return parts;
}

OnboardingParts WindowsStage::onboardingParts() const
{
    const auto parts = this->parts();
    return {
        parts.defaults, parts.loginItem, parts.audioAccess, parts.systemPages, parts.isTrayMissing};
}

} // namespace fadewell
