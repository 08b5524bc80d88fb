#include "main/Composition.h"

#include "audio/EngineContext.h"

#include <QCoreApplication>

#include <utility>

namespace fadewell {
namespace {

std::shared_ptr<MixerModel> makeModel(const Platform& platform,
                                      std::shared_ptr<SerialQueue> mainQueue,
                                      std::shared_ptr<Clock> clock,
                                      QueueFactory makeQueue)
{
    const EngineContext engine{
        platform.hardware, platform.processLookup, std::move(clock), std::move(makeQueue)};
    return MixerModel::create(
        {.mainQueue = std::move(mainQueue),
         .workspace = platform.workspace,
         .defaults = platform.defaults,
         .monitor = ProcessMonitor::create(engine),
         .devices = DeviceMonitor::create(engine),
         .taps = TapManager::create(engine),
         .microphoneController = MicrophoneController::create(engine, platform.defaults),
         .store = std::make_shared<AppSettingsStore>(platform.defaults),
         .startGate = platform.startGate});
}

// The windows' catalogue has them, where there are windows.
std::string translated(const char* title)
{
    return QCoreApplication::translate("ShortcutsPane", title).toStdString();
}

} // namespace

Composition::Composition(Platform platform,
                         std::shared_ptr<SerialQueue> mainQueue,
                         std::shared_ptr<Clock> clock,
                         QueueFactory makeQueue)
    : hardwareOwner_(platform.hardware)
    , platform_(std::move(platform))
    , model_(makeModel(platform_, mainQueue, clock, makeQueue))
    , loginItem_(platform_.loginItemService
                     ? std::make_shared<LoginItem>(platform_.loginItemService)
                     : nullptr)
    , audioAccess_(std::make_shared<AudioAccess>(
          EngineContext{
              platform_.hardware, platform_.processLookup, std::move(clock), std::move(makeQueue)},
          mainQueue))
    , shortcuts_(shortcuts::KeyboardShortcuts::create(
          std::move(mainQueue), platform_.defaults, platform_.hotKeys))
    , delegate_(model_, platform_.hardware, platform_.defaults)
{
    delegate_.setShortcuts(shortcuts_, translated);
}

void Composition::setWindows(std::shared_ptr<AppWindows> windows)
{
    delegate_.setWindows(std::move(windows));
}

void Composition::reopen()
{
    delegate_.applicationShouldHandleReopen();
}

void Composition::launch(const std::function<void()>& installSignalHandlers)
{
    isRunning_ = true;
    delegate_.applicationDidFinishLaunching(installSignalHandlers);
}

void Composition::terminate()
{
    if (std::exchange(isRunning_, false)) {
        delegate_.applicationWillTerminate();
        platform_.defaults->flush();
    }
}

} // namespace fadewell
