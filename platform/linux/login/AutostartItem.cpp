#include "platform/linux/login/AutostartItem.h"

#include "platform/linux/SettingsFile.h"
#include "platform/linux/identity/DesktopEntry.h"

#include <algorithm>
#include <fmt/format.h>
#include <sstream>
#include <string_view>
#include <unistd.h>
#include <utility>

namespace fs = std::filesystem;

namespace fadewell {
namespace {

constexpr const char* fileName = "app.fadewell.Fadewell.desktop";
// Tells an entry that only hides the administrator's from one that somebody switched off.
constexpr const char* offMark = "X-Fadewell-Unregistered";

std::vector<std::string> split(const std::string& text, char separator)
{
    std::vector<std::string> parts;
    std::istringstream stream(text);
    for (std::string part; std::getline(stream, part, separator);) {
        if (!part.empty()) {
            parts.push_back(part);
        }
    }
    return parts;
}

std::string_view trimmed(std::string_view text)
{
    constexpr std::string_view blank = " \t\r";
    const auto first = text.find_first_not_of(blank);
    return first == std::string_view::npos
               ? std::string_view()
               : text.substr(first, text.find_last_not_of(blank) - first + 1);
}

/// A key of the main group, as it is written.
std::string valueOf(std::string_view text, std::string_view key)
{
    bool isMainGroup = false;
    std::istringstream lines{std::string(text)};
    for (std::string line; std::getline(lines, line);) {
        const auto entry = trimmed(line);
        const auto equals = entry.find('=');
        if (entry.starts_with('[')) {
            isMainGroup = entry == "[Desktop Entry]";
        } else if (isMainGroup && equals != std::string_view::npos &&
                   trimmed(entry.substr(0, equals)) == key)
        {
            return std::string(trimmed(entry.substr(equals + 1)));
        }
    }
    return {};
}

/// As the command line of a desktop entry wants it.
std::string quoted(const std::string& argument)
{
    std::string result = "\"";
    for (const char character : argument) {
        if (std::string_view("\"`$\\").find(character) != std::string_view::npos) {
            // Once for the command line, and each of these once more for the file.
            result += character == '\\' ? R"(\\\)" : R"(\\)";
        }
        result += character == '%' ? "%%" : std::string(1, character);
    }
    return result + '"';
}

} // namespace

AutostartItem::Place AutostartItem::Place::current(const XdgPaths& paths,
                                                   const XdgPaths::Environment& environment)
{
    const auto list = [&](const char* name, const char* fallback) {
        return split(environment(name).value_or(fallback), ':');
    };
    Place place;
    place.userFolder = paths.configHome / "autostart";
    for (const auto& folder : list("XDG_CONFIG_DIRS", "/etc/xdg")) {
        place.systemFolders.push_back(fs::path(folder) / "autostart");
    }
    // An AppImage's own program is gone as soon as it ends.
    std::error_code ignored;
    const auto image = environment("APPIMAGE");
    place.program = image ? fs::path(*image) : fs::read_symlink("/proc/self/exe", ignored);
    place.desktops = list("XDG_CURRENT_DESKTOP", "");
    for (const auto& folder : list("PATH", "/usr/local/bin:/usr/bin:/bin")) {
        place.programFolders.emplace_back(folder);
    }
    return place;
}

AutostartItem::AutostartItem(Place place)
    : place_(std::move(place))
    , userFile_(place_.userFolder / fileName)
{}

LoginItemStatus AutostartItem::status()
{
    const auto text = winningText();
    if (!text) {
        auto folder = place_.userFolder;
        while (access(folder.c_str(), F_OK) != 0 && folder.has_relative_path()) {
            folder = folder.parent_path();
        }
        const bool canBe = access(folder.c_str(), W_OK) == 0 && resolves(place_.program);
        return canBe ? LoginItemStatus::notRegistered : LoginItemStatus::notFound;
    }
    if (valueOf(*text, offMark) == "true") {
        return LoginItemStatus::notRegistered;
    }
    if (isSwitchedOff(*text)) {
        return LoginItemStatus::requiresApproval;
    }
    const auto parsed = DesktopEntry::parse(*text, {});
    const bool isThere = !parsed.exec.empty() && resolves(parsed.exec.front()) &&
                         (parsed.tryExec.empty() || resolves(parsed.tryExec));
    return isThere ? LoginItemStatus::enabled : LoginItemStatus::notFound;
}

std::optional<std::string> AutostartItem::registerItem()
{
    if (!resolves(place_.program)) {
        return "the program is not at " + place_.program.native();
    }
    return write(entry());
}

std::optional<std::string> AutostartItem::unregisterItem()
{
    if (isSystems()) {
        return write(fmt::format(
            "[Desktop Entry]\nType=Application\nName=Fadewell\nHidden=true\n{}=true\n", offMark));
    }
    std::error_code error;
    if (!fs::remove(userFile_, error)) {
        return error ? error.message() : "it was not registered";
    }
    return std::nullopt;
}

std::optional<std::string> AutostartItem::winningText() const
{
    std::vector<fs::path> folders{place_.userFolder};
    folders.insert(folders.end(), place_.systemFolders.begin(), place_.systemFolders.end());
    for (const auto& folder : folders) {
        auto contents = SettingsFile(folder / fileName).read();
        if (contents.outcome == SettingsFile::Outcome::read) {
            return std::move(contents.bytes);
        }
    }
    return std::nullopt;
}

bool AutostartItem::isSystems() const
{
    return std::any_of(
        place_.systemFolders.begin(), place_.systemFolders.end(), [](const auto& folder) {
            return access((folder / fileName).c_str(), F_OK) == 0;
        });
}

bool AutostartItem::resolves(const std::string& program) const
{
    if (fs::path(program).is_absolute()) {
        return access(program.c_str(), X_OK) == 0;
    }
    return std::any_of(
        place_.programFolders.begin(), place_.programFolders.end(), [&](const auto& folder) {
            return !program.empty() && access((folder / program).c_str(), X_OK) == 0;
        });
}

bool AutostartItem::isSwitchedOff(std::string_view text) const
{
    const auto names = [&](const char* key) {
        const auto listed = split(valueOf(text, key), ';');
        return std::any_of(
            place_.desktops.begin(), place_.desktops.end(), [&](const auto& desktop) {
                return std::find(listed.begin(), listed.end(), desktop) != listed.end();
            });
    };
    return valueOf(text, "Hidden") == "true" ||
           valueOf(text, "X-GNOME-Autostart-enabled") == "false" ||
           valueOf(text, "X-MATE-Autostart-enabled") == "false" || names("NotShowIn") ||
           (!valueOf(text, "OnlyShowIn").empty() && !names("OnlyShowIn"));
}

std::optional<std::string> AutostartItem::write(const std::string& text) const
{
    if (!makePrivateFolder(place_.userFolder)) {
        return "the folder " + place_.userFolder.native() + " can't be made";
    }
    return SettingsFile(userFile_).write(text);
}

std::string AutostartItem::entry() const
{
    return fmt::format("[Desktop Entry]\nType=Application\nName=Fadewell\n"
                       "Comment=Every app its own volume\nIcon=app.fadewell.Fadewell\n"
                       "Exec={} --background\nTryExec={}\nNoDisplay=true\n"
                       "X-GNOME-Autostart-enabled=true\n",
                       quoted(place_.program.native()),
                       place_.program.native());
}

} // namespace fadewell
