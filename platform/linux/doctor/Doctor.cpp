#include "platform/linux/doctor/Doctor.h"

#include "audio/AudioPermission.h"
#include "audio/InputControls.h"
#include "audio/PropertyReaders.h"
#include "platform/linux/XdgPaths.h"
#include "platform/linux/doctor/Findings.h"
#include "platform/linux/identity/AppIdentities.h"
#include "platform/linux/pipewire/PipeWireHardware.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <unistd.h>

namespace fadewell {
namespace {

std::string variable(const char* name)
{
    const char* const value = std::getenv(name);
    return value ? value : "";
}

std::optional<std::string> deviceName(AudioHardware& hardware, AudioObjectID device)
{
    return device == kAudioObjectUnknown
               ? std::nullopt
               : stringProperty(hardware, device, kAudioObjectPropertyName);
}

/// Its successor leaves the same file, under another program's number.
bool isPulseAudioThere(const XdgPaths& paths)
{
    int pid = 0;
    std::string name;
    std::ifstream(paths.runtimeDir / "pulse/pid") >> pid;
    std::ifstream("/proc/" + std::to_string(pid) + "/comm") >> name;
    return name == "pulseaudio";
}

SoundFacts soundFacts(const XdgPaths& paths)
{
    SoundFacts facts;
    const auto hardware =
        PipeWireHardware::create({}, std::make_shared<AppIdentities>(), facts.error);
    if (!hardware) {
        facts.isPulseAudioThere = isPulseAudioThere(paths);
        return facts;
    }
    facts.server = hardware->describeServer();
    facts.isPermitted = AudioPermission::check(*hardware);
    if (const auto output = defaultOutputDevice(*hardware)) {
        facts.output = deviceName(*hardware, *output);
    }
    const auto input = uint32Property(
        *hardware, kAudioObjectSystemObject, kAudioHardwarePropertyDefaultInputDevice);
    facts.microphone = deviceName(*hardware, input.value_or(kAudioObjectUnknown));
    facts.canMuteMicrophone = input && canUseMuteProperty(*hardware, *input);
    facts.untappable = hardware->untappable();
    return facts;
}

SessionFacts sessionFacts(const XdgPaths& paths)
{
    SessionFacts facts;
    facts.desktop = variable("XDG_CURRENT_DESKTOP");
    facts.sessionType = variable("XDG_SESSION_TYPE");
    std::error_code ignored;
    if (std::filesystem::exists("/.flatpak-info", ignored)) {
        facts.sandbox = "Flatpak";
    } else if (!variable("SNAP").empty()) {
        facts.sandbox = "Snap";
    }
    facts.hasRuntimeFolder = !variable("XDG_RUNTIME_DIR").empty();
    const auto file = paths.settingsFile();
    facts.settingsFile = file.string();
    // What isn't there yet is made where its next existing folder may be written.
    auto existing = std::filesystem::exists(file, ignored) ? file : file.parent_path();
    while (!std::filesystem::exists(existing, ignored) && existing.has_relative_path()) {
        existing = existing.parent_path();
    }
    facts.canWriteSettings = access(existing.c_str(), W_OK) == 0;
    return facts;
}

} // namespace

std::vector<Finding> diagnose()
{
    const auto paths = XdgPaths::current();
    auto findings = sessionFindings(sessionFacts(paths));
    const auto sound = soundFindings(soundFacts(paths));
    findings.insert(findings.end(), sound.begin(), sound.end());
    return findings;
}

} // namespace fadewell
