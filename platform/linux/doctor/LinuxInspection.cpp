#include "platform/linux/doctor/LinuxInspection.h"

#include "audio/AudioPermission.h"
#include "audio/InputControls.h"
#include "audio/PropertyReaders.h"
#include "platform/linux/SettingsFile.h"
#include "platform/linux/XdgPaths.h"
#include "platform/linux/doctor/Findings.h"
#include "platform/linux/doctor/SystemVersions.h"
#include "platform/linux/identity/AppIdentities.h"
#include "platform/linux/pipewire/PipeWireHardware.h"

#include <cstdlib>
#include <filesystem>
#include <fmt/format.h>
#include <fstream>
#include <unistd.h>
#include <utility>

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

/// `hardware` is absent where `problem` says why.
SoundFacts soundFacts(const XdgPaths& paths,
                      const std::shared_ptr<PipeWireHardware>& hardware,
                      const std::string& problem)
{
    SoundFacts facts;
    if (!hardware) {
        facts.error = problem;
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

std::string orUnknown(std::string text)
{
    return text.empty() ? "unknown" : text;
}

} // namespace

LinuxInspection::LinuxInspection(std::shared_ptr<PipeWireHardware> hardware)
    : LinuxInspection(std::move(hardware), {})
{}

LinuxInspection::LinuxInspection(std::shared_ptr<PipeWireHardware> hardware, std::string problem)
    : hardware_(std::move(hardware))
    , problem_(std::move(problem))
{}

std::shared_ptr<LinuxInspection> LinuxInspection::connect()
{
    std::string problem;
    auto hardware = PipeWireHardware::create({}, std::make_shared<AppIdentities>(), problem);
    return std::shared_ptr<LinuxInspection>(
        new LinuxInspection(std::move(hardware), std::move(problem)));
}

SystemInspection::Versions LinuxInspection::versions()
{
    Versions versions;
    if (hardware_) {
        const auto server = hardware_->describeServer();
        const auto manager = loadedLibraryVersion(server.sessionManagerPID, "libwireplumber-");
        versions.emplace_back("PipeWire server", orUnknown(server.version));
        versions.emplace_back("PipeWire library", server.libraryVersion);
        versions.emplace_back("Session manager",
                              orUnknown(server.sessionManager) +
                                  (manager.empty() ? ", version unknown" : ' ' + manager));
        versions.emplace_back("Pulse protocol", server.hasPulseServer ? "pipewire-pulse" : "none");
    } else {
        versions.emplace_back("PipeWire server", "not reached");
        versions.emplace_back("PipeWire library", pw_get_library_version());
    }
    for (auto& version : machineVersions()) {
        versions.push_back(std::move(version));
    }
    const auto session = sessionFacts(XdgPaths::current());
    versions.emplace_back(
        "Desktop",
        fmt::format("{}, session {}", orUnknown(session.desktop), orUnknown(session.sessionType)));
    versions.emplace_back("Sandbox", session.sandbox.empty() ? "none" : session.sandbox);
    return versions;
}

std::vector<Finding> LinuxInspection::findings()
{
    const auto paths = XdgPaths::current();
    auto findings = sessionFindings(sessionFacts(paths));
    const auto sound = soundFindings(soundFacts(paths, hardware_, problem_));
    findings.insert(findings.end(), sound.begin(), sound.end());
    return findings;
}

std::vector<SoundNode> LinuxInspection::nodes()
{
    return hardware_ ? hardware_->soundNodes() : std::vector<SoundNode>();
}

SystemInspection::StoredSettings LinuxInspection::settings()
{
    const SettingsFile file(XdgPaths::current().settingsFile());
    auto contents = file.read();
    using enum SettingsFile::Outcome;
    return {file.path().string(),
            std::move(contents.bytes),
            contents.outcome == missing      ? "there is no such file: nothing has been changed yet"
            : contents.outcome == unreadable ? "it can't be read: " + contents.reason
                                             : ""};
}

SystemInspection::Owner LinuxInspection::owner()
{
    return machineOwner();
}

} // namespace fadewell
