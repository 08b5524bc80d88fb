#include "main/Platform.h"
#include "platform/linux/FileUserDefaults.h"
#include "platform/linux/LinuxLogSink.h"
#include "platform/linux/LinuxProcessLookup.h"
#include "platform/linux/XdgPaths.h"
#include "platform/linux/XdgWorkspace.h"
#include "platform/linux/identity/AppIdentities.h"
#include "platform/linux/pipewire/PipeWireHardware.h"

namespace fadewell {

std::shared_ptr<LogSink> makeLogSink(bool isVerbose)
{
    return std::make_shared<LinuxLogSink>(LinuxLogSink::preferredDestination(), isVerbose);
}

std::optional<Platform> makePlatform(const std::shared_ptr<SerialQueue>& mainQueue,
                                     const QueueFactory& makeQueue,
                                     std::string& error)
{
    const auto identities = std::make_shared<AppIdentities>();
    const auto hardware = PipeWireHardware::create({}, identities, error);
    if (!hardware) {
        return std::nullopt;
    }
    Platform platform;
    platform.hardware = hardware;
    platform.processLookup = std::make_shared<LinuxProcessLookup>(identities);
    platform.tappability = hardware;
    platform.workspace = std::make_shared<XdgWorkspace>(identities, mainQueue);
    platform.defaults = std::make_shared<FileUserDefaults>(XdgPaths::current().settingsFile(),
                                                           makeQueue("app.fadewell.defaults"));
    return platform;
}

} // namespace fadewell
