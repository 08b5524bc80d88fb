#pragma once

#include "app/MixerModel.h"
#include "base/MemoryUserDefaults.h"
#include "base/SystemClock.h"
#include "platform/simulated/SimulatedHardware.h"
#include "platform/simulated/SimulatedHotKeyService.h"
#include "platform/simulated/SimulatedLoginItemService.h"
#include "platform/simulated/SimulatedProcessLookup.h"
#include "ui/onboarding/OnboardingParts.h"
#include "ui/settings/SettingsParts.h"
#include "ui/shortcuts/LocalKeyFilter.h"

#include <memory>

namespace fadewell {

/// What the settings and the onboarding stand on, over simulated systems, in a situation worth
/// looking at. [main thread]
class WindowsStage final {
public:
    struct Situation {
        bool isEmpty = false;    ///< nothing remembered, no call app installed
        bool isPermitted = true; ///< capturing sound
        bool isHanging = false;  ///< the permission is never answered
        bool hasTray = true;
        bool needsApproval = false;
        shortcuts::HotKeyService::Support support = shortcuts::HotKeyService::Support::any;
    };

    explicit WindowsStage(const Situation& situation);
    ~WindowsStage();
    WindowsStage(const WindowsStage&) = delete;
    WindowsStage& operator=(const WindowsStage&) = delete;

    [[nodiscard]] SettingsParts parts() const;
    [[nodiscard]] OnboardingParts onboardingParts() const;
    [[nodiscard]] UserDefaults& defaults() { return *defaults_; }

private:
    struct Desktop;
    struct Server;

    [[nodiscard]] EngineContext engine() const;
    void createModel();
    void remember();
    void assignShortcuts(shortcuts::HotKeyService::Support support);

    Situation situation_;
    std::shared_ptr<SystemClock> clock_ = std::make_shared<SystemClock>();
    std::shared_ptr<SerialQueue> mainQueue_;
    std::shared_ptr<SimulatedHardware> hardware_;
    std::shared_ptr<SimulatedProcessLookup> lookup_ = std::make_shared<SimulatedProcessLookup>();
    std::shared_ptr<MemoryUserDefaults> defaults_ = std::make_shared<MemoryUserDefaults>();
    std::shared_ptr<SimulatedHotKeyService> keys_ = std::make_shared<SimulatedHotKeyService>();
    std::shared_ptr<Desktop> desktop_;
    std::shared_ptr<Server> server_;
    std::shared_ptr<MixerModel> model_;
    std::shared_ptr<LoginItem> loginItem_;
    std::shared_ptr<AudioAccess> audioAccess_;
    std::shared_ptr<shortcuts::KeyboardShortcuts> shortcuts_;
    std::unique_ptr<LocalKeyFilter> keyFilter_;
    Timer cycles_;
};

} // namespace fadewell
