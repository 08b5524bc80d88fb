#include "platform/linux/identity/DesktopIndex.h"

#include "platform/linux/XdgPaths.h"
#include "platform/linux/identity/KnownApps.h"
#include "platform/linux/identity/LocaleNames.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <sstream>
#include <tuple>
#include <utility>

namespace fadewell {
namespace fs = std::filesystem;
namespace {

constexpr std::size_t maximumEntries = 20000;
constexpr int maximumDepth = 4;

template <class Map>
typename Map::mapped_type find(const Map& map, std::string_view name)
{
    const auto found = map.find(lowerCase(name));
    return found == map.end() ? nullptr : found->second;
}

/// Of several entries that start one program, the one that does nothing else is the application.
auto rank(const DesktopEntry& entry)
{
    const auto program = DesktopIndex::programOf(entry).name;
    return std::tuple(
        entry.isNoDisplay, entry.exec.size(), lowerCase(entry.id) != lowerCase(program), entry.id);
}

template <class Map>
void offer(Map& map, std::string_view name, const DesktopIndex::Entry& entry)
{
    if (name.empty()) {
        return;
    }
    auto& place = map[lowerCase(name)];
    if (!place || rank(*entry) < rank(*place)) {
        place = entry;
    }
}

/// Wrappers that start an application by something other than its program.
bool startsByID(std::string_view program)
{
    constexpr std::array<std::string_view, 8> starters{"flatpak",
                                                       "snap",
                                                       "gtk-launch",
                                                       "gapplication",
                                                       "dex",
                                                       "kioclient",
                                                       "xdg-open",
                                                       "systemd-run"};
    return std::find(starters.begin(), starters.end(), program) != starters.end();
}

/// What stands between a wrapper and the command: its options and, for "env", assignments.
auto behindOptions(const std::vector<std::string>& command)
{
    constexpr std::array<std::string_view, 6> withValue{
        "-u", "--unset", "-C", "--chdir", "-n", "-c"};
    auto word = command.begin() + 1;
    while (word != command.end() &&
           (word->starts_with('-') || word->find('=') != std::string::npos)) {
        const bool takesNext =
            std::find(withValue.begin(), withValue.end(), *word) != withValue.end();
        ++word;
        if (takesNext && word != command.end()) {
            ++word;
        }
    }
    return word;
}

std::vector<std::string> withoutWrappers(std::vector<std::string> command)
{
    const auto isPrefix = [](const std::string& word) {
        return KnownApps::instance().role(fileName(word)) == KnownApps::Role::wrapper;
    };
    while (!command.empty() && isPrefix(command.front())) {
        if (startsByID(fileName(command.front()))) {
            return {};
        }
        command.erase(command.begin(), behindOptions(command));
    }
    return command;
}

} // namespace

DesktopIndex::Config DesktopIndex::Config::current()
{
    Config config{
        XdgPaths::current().dataDirs, {}, {"/opt", "/usr"}, languageTags(messagesLocale())};
    const char* path = std::getenv("PATH");
    std::istringstream folders((path == nullptr ? std::string{} : path + std::string(":")) +
                               "/usr/local/bin:/usr/bin:/bin:/usr/games");
    for (std::string folder; std::getline(folders, folder, ':');) {
        if (folder.starts_with('/')) {
            config.binFolders.emplace_back(folder);
        }
    }
    return config;
}

DesktopIndex::DesktopIndex(Config config)
    : config_(std::move(config))
{
    readAll();
}

DesktopIndex::Stamp DesktopIndex::stamp(const fs::path& folder)
{
    std::error_code error;
    const auto modified = fs::last_write_time(folder, error);
    return {folder, error ? std::nullopt : std::optional(modified)};
}

void DesktopIndex::refresh()
{
    const bool isCurrent = std::all_of(stamps_.begin(), stamps_.end(), [](const Stamp& known) {
        return stamp(known.folder) == known;
    });
    if (!isCurrent) {
        readAll();
    }
}

void DesktopIndex::readAll()
{
    stamps_.clear();
    visited_.clear();
    for (auto* map : {&byID_, &byProgram_, &byWMClass_, &byIcon_, &byFolder_}) {
        map->clear();
    }
    for (const auto& dataDir : config_.dataDirs) {
        readFolder(dataDir / "applications", "", 0);
    }
    for (const auto& [id, entry] : byID_) {
        add(entry);
    }
}

void DesktopIndex::readFolder(const fs::path& folder, const std::string& prefix, int depth)
{
    stamps_.push_back(stamp(folder)); // Before reading: what comes later is then a change.
    std::error_code error;
    const auto real = fs::canonical(folder, error);
    if (error || !visited_.insert(real).second) {
        return; // There is none, or a link leads back to where we were.
    }
    fs::directory_iterator item(folder, error);
    for (; !error && item != fs::directory_iterator(); item.increment(error)) {
        std::error_code ignored; // An item that can't be told is no folder.
        const auto name = item->path().filename().string();
        if (item->is_directory(ignored)) {
            if (depth < maximumDepth) {
                readFolder(item->path(), prefix + name + '-', depth + 1);
            }
        } else if (name.ends_with(".desktop") && byID_.size() < maximumEntries) {
            const auto id = prefix + item->path().stem().string();
            if (byID_.contains(lowerCase(id))) {
                continue; // An earlier folder's entry replaces this one.
            }
            if (auto entry = DesktopEntry::read(item->path(), config_.languages)) {
                entry->id = id;
                byID_.emplace(lowerCase(id), std::make_shared<DesktopEntry>(std::move(*entry)));
            }
        }
    }
}

void DesktopIndex::add(const Entry& entry)
{
    if (entry->isHidden || !entry->isApplication) {
        return;
    }
    offer(byWMClass_, entry->startupWMClass, entry);
    offer(byIcon_, entry->icon, entry);
    addProgram(entry);
}

Program DesktopIndex::programOf(const DesktopEntry& entry)
{
    const auto command = withoutWrappers(entry.exec);
    if (command.empty()) {
        return {};
    }
    const auto& first = command.front();
    return programOfCommand(first.starts_with('/') ? first : std::string{}, command, "");
}

void DesktopIndex::addProgram(const Entry& entry)
{
    const auto program = programOf(*entry);
    const bool isTelling =
        program.kind == Program::Kind::binary || program.kind == Program::Kind::script;
    if (!isTelling || program.name.empty()) {
        return;
    }
    offer(byProgram_, program.name, entry);
    offer(byProgram_, program.folderName, entry);
    const auto file = resolved(program.path.empty() ? program.name : program.path);
    if (file.empty()) {
        return;
    }
    // The command may be a link to a program of another name, but not to one that runs others.
    const auto real = programOfCommand(file.string(), {}, "");
    const auto role = KnownApps::instance().role(real.name);
    if (real.kind == Program::Kind::binary && role != KnownApps::Role::wrapper) {
        offer(byProgram_, real.name, entry);
        addFolder(entry, file);
    }
}

void DesktopIndex::addFolder(const Entry& entry, const fs::path& file)
{
    const auto folder = file.parent_path();
    if (!isApplicationFolder(folder)) {
        return;
    }
    const auto [place, isNew] = byFolder_.try_emplace(lowerCase(folder.native()), entry);
    if (isNew || !place->second) {
        return;
    }
    const bool isSameProgram = programOf(*place->second).name == programOf(*entry).name;
    if (!isSameProgram) {
        place->second = nullptr;
    } else if (rank(*entry) < rank(*place->second)) {
        place->second = entry;
    }
}

bool DesktopIndex::isApplicationFolder(const fs::path& folder) const
{
    constexpr std::array<std::string_view, 10> shared{
        "bin", "sbin", "games", "lib", "lib64", "libexec", "share", "local", "opt", "usr"};
    const auto name = folder.filename().string();
    if (std::find(shared.begin(), shared.end(), name) != shared.end() ||
        name.find("-linux-gnu") != std::string::npos)
    {
        return false;
    }
    return std::any_of(
        config_.installRoots.begin(), config_.installRoots.end(), [&folder](const fs::path& root) {
            return folder.native().starts_with(root.native() + '/');
        });
}

fs::path DesktopIndex::resolved(const std::string& program) const
{
    std::error_code error;
    if (program.starts_with('/')) {
        auto file = fs::canonical(program, error);
        return error ? fs::path{} : file;
    }
    for (const auto& folder : config_.binFolders) {
        if (auto file = fs::canonical(folder / program, error); !error) {
            return file;
        }
    }
    return {};
}

DesktopIndex::Entry DesktopIndex::byID(std::string_view id) const
{
    const auto entry = find(byID_, id);
    return entry && entry->isApplication && !entry->isHidden ? entry : nullptr;
}

DesktopIndex::Entry DesktopIndex::byProgram(std::string_view program) const
{
    return find(byProgram_, program);
}

DesktopIndex::Entry DesktopIndex::byWMClass(std::string_view name) const
{
    return find(byWMClass_, name);
}

DesktopIndex::Entry DesktopIndex::byIcon(std::string_view name) const
{
    return find(byIcon_, name);
}

DesktopIndex::Entry DesktopIndex::byFolderOf(const std::string& file) const
{
    return file.empty() ? nullptr : find(byFolder_, fs::path(file).parent_path().native());
}

DesktopIndex::Entry DesktopIndex::read(const fs::path& path) const
{
    auto entry = DesktopEntry::read(path, config_.languages);
    if (!entry || !entry->isApplication) {
        return nullptr;
    }
    entry->id = path.stem().string();
    return std::make_shared<DesktopEntry>(std::move(*entry));
}

} // namespace fadewell
