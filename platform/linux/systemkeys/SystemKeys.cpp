#include "platform/linux/systemkeys/SystemKeys.h"

#include "platform/linux/identity/SmallFile.h"
#include "platform/linux/systemkeys/GSettingsShortcuts.h"
#include "platform/linux/systemkeys/KdeShortcuts.h"
#include "platform/linux/systemkeys/XfceShortcuts.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <string>

namespace fadewell::SystemKeys {
namespace fs = std::filesystem;
namespace {

constexpr std::size_t longestFile = 1U << 20U;
constexpr const char* xfceFile = "xfce4/xfconf/xfce-perchannel-xml/xfce4-keyboard-shortcuts.xml";
constexpr const char* kdeFile = "kglobalshortcutsrc";

std::vector<std::string> split(const std::string& list)
{
    std::vector<std::string> parts;
    for (std::size_t start = 0; start <= list.size();) {
        const auto end = std::min(list.find(':', start), list.size());
        parts.push_back(list.substr(start, end - start));
        start = end + 1;
    }
    return parts;
}

/// Each that there is of this name, the least important first.
std::vector<std::string> configFiles(const XdgPaths::Environment& environment, const char* name)
{
    const auto listed = environment("XDG_CONFIG_DIRS").value_or("");
    auto folders = split(listed.empty() ? "/etc/xdg" : listed);
    std::reverse(folders.begin(), folders.end());
    folders.push_back(XdgPaths::fromEnvironment(environment).configHome);
    std::vector<std::string> texts;
    for (const fs::path folder : folders) {
        if (!folder.is_absolute()) {
            continue; // as the standard demands
        }
        if (auto text = readSmallFile(folder / name, longestFile)) {
            texts.push_back(std::move(*text));
        }
    }
    return texts;
}

} // namespace

std::vector<KeyBinding> read(const XdgPaths::Environment& environment)
{
    std::vector<KeyBinding> bindings;
    const auto add = [&bindings](const std::vector<KeyBinding>& more) {
        bindings.insert(bindings.end(), more.begin(), more.end());
    };
    for (const auto& desktop : split(environment("XDG_CURRENT_DESKTOP").value_or(""))) {
        if (desktop == "KDE") {
            add(KdeShortcuts::parse(configFiles(environment, kdeFile)));
        } else if (desktop == "XFCE") {
            add(XfceShortcuts::parse(configFiles(environment, xfceFile)));
        } else {
            add(GSettingsShortcuts::read(desktop));
        }
    }
    return bindings;
}

std::vector<KeyBinding> read()
{
    return read([](const char* name) -> std::optional<std::string> {
        const char* value = std::getenv(name); // NOLINT(concurrency-mt-unsafe): nobody sets it
        return value == nullptr ? std::nullopt : std::optional<std::string>(value);
    });
}

} // namespace fadewell::SystemKeys
