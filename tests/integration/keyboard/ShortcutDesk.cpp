#include "tests/integration/keyboard/ShortcutDesk.h"

#include "shortcuts/Modifiers.h"
#include "shortcuts/Shortcut.h"
#include "shortcuts/SpecialKey.h"

#include <array>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>
#include <unistd.h>

namespace fadewell::integration {
namespace {

constexpr int leftSuper = 133;
constexpr int f1 = 67;

void writeSettings()
{
    constexpr std::array names{
        "toggleMicrophone", "toggleCallMode", "raiseFrontmostApp", "lowerFrontmostApp"};
    nlohmann::json settings;
    for (std::size_t index = 0; index < names.size(); ++index) {
        const auto key = static_cast<shortcuts::SpecialKey>(
            static_cast<std::size_t>(shortcuts::SpecialKey::f1) + index);
        const shortcuts::Shortcut shortcut{shortcuts::keyCode(key), shortcuts::classic::command};
        settings[std::string("KeyboardShortcuts_") + names[index]] = {
            {"type", "string"}, {"value", shortcut.encoded()}};
    }
    settings["hasCompletedOnboarding"] = {{"type", "boolean"}, {"value", true}};
    const auto folder = std::filesystem::path(std::getenv("XDG_CONFIG_HOME")) / "fadewell";
    std::filesystem::create_directories(folder);
    std::ofstream(folder / "settings.json") << settings;
}

int keycode(ShortcutDesk::Key key)
{
    return f1 + static_cast<int>(key);
}

} // namespace

ShortcutDesk::ShortcutDesk(Fadewell::Windows windows)
    : windows_(server_)
{
    writeSettings();
    setenv("DISPLAY", server_.display().c_str(), 1);
    unsetenv("WAYLAND_DISPLAY");
    unsetenv("XDG_SESSION_TYPE");
    fadewell_.emplace("LC_ALL=C.UTF-8", windows);
}

ShortcutDesk::~ShortcutDesk()
{
    static_cast<void>(fadewell_->end(SIGTERM));
    unsetenv("DISPLAY");
}

void ShortcutDesk::press(Key key)
{
    server_.press(leftSuper);
    server_.press(keycode(key));
}

void ShortcutDesk::release(Key key)
{
    server_.release(keycode(key));
    server_.release(leftSuper);
}

void ShortcutDesk::strike(Key key)
{
    press(key);
    release(key);
}

void ShortcutDesk::type(const std::vector<int>& keycodes)
{
    for (const int keycode : keycodes) {
        server_.strike({keycode});
    }
}

bool ShortcutDesk::isFree(Key key)
{
    const bool isFree = windows_.grab(keycode(key), XCB_MOD_MASK_4);
    if (isFree) {
        windows_.ungrab(keycode(key), XCB_MOD_MASK_4);
    }
    return isFree;
}

void ShortcutDesk::bringToFront(pid_t process)
{
    std::array<char, 256> host{};
    if (process == 0 || gethostname(host.data(), host.size() - 1) != 0) {
        windows_.setActiveWindow(XCB_WINDOW_NONE);
        return;
    }
    windows_.setActiveWindow(windows_.openWindow(static_cast<std::uint32_t>(process), host.data()));
}

} // namespace fadewell::integration
