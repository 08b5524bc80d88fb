#include "platform/linux/pipewire/taps/TargetJournal.h"

#include "base/LenientJson.h"
#include "platform/linux/FileDescriptor.h"
#include "platform/linux/XdgPaths.h"
#include "platform/linux/identity/SmallFile.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <system_error>
#include <utility>

namespace fadewell::pipewire {
namespace fs = std::filesystem;
namespace {

constexpr std::string_view prefix = "targets-";
constexpr std::string_view suffix = ".json";

// Far above what any desktop has, and small enough to be read at every start.
constexpr std::size_t mostFiles = 64;
constexpr std::size_t mostBytes = 1U << 20U;
constexpr std::size_t mostEntries = 4096;

/// Whose file this is; absent for what is no journal.
std::optional<ProcessInstance> ownerOf(const fs::path& file)
{
    const std::string name = file.filename();
    if (!name.starts_with(prefix) || !name.ends_with(suffix) ||
        name.size() < prefix.size() + suffix.size())
    {
        return std::nullopt;
    }
    return ProcessInstance::parse(
        std::string_view(name).substr(prefix.size(), name.size() - prefix.size() - suffix.size()));
}

std::optional<TargetJournal::Entry> parseEntry(const nlohmann::json& json)
{
    if (!json.is_object()) {
        return std::nullopt;
    }
    const auto stream = json.find("stream");
    const auto node = json.find("node");
    const auto target = json.find("target");
    const bool isWhole = stream != json.end() && stream->is_number_unsigned() &&
                         node != json.end() && node->is_string() && target != json.end() &&
                         target->is_string();
    return isWhole ? std::optional(TargetJournal::Entry{*stream, *node, *target}) : std::nullopt;
}

std::vector<TargetJournal::Entry> parseEntries(const std::string& text)
{
    std::vector<TargetJournal::Entry> entries;
    const auto json = parseJson(text);
    if (!json || !json->is_array()) {
        return entries;
    }
    for (const auto& element : *json) {
        if (auto entry = parseEntry(element); entry && entries.size() < mostEntries) {
            entries.push_back(std::move(*entry));
        }
    }
    return entries;
}

} // namespace

TargetJournal::TargetJournal(fs::path folder, ProcessInstance owner)
    : folder_(std::move(folder))
    , owner_(owner)
    , file_(folder_ / (std::string(prefix) + owner.text() + std::string(suffix)))
{
    if (!folder_.empty()) {
        readLeft();
    }
}

void TargetJournal::readLeft()
{
    std::error_code error;
    for (fs::directory_iterator at(folder_, error), end; !error && at != end; at.increment(error)) {
        const auto owner = ownerOf(at->path());
        // A file of this run's own name would be one that this run wrote before.
        if (!owner || owner->isRunning() || leftFiles_.size() == mostFiles) {
            continue;
        }
        leftFiles_.push_back(at->path());
        auto entries = parseEntries(readSmallFile(at->path(), mostBytes).value_or(""));
        left_.insert(left_.end(),
                     std::make_move_iterator(entries.begin()),
                     std::make_move_iterator(entries.end()));
    }
}

void TargetJournal::record(const Entry& entry)
{
    const auto [at, isNew] = entries_.try_emplace(entry.stream, entry);
    if (isNew || std::exchange(at->second, entry) != entry) {
        write();
    }
}

void TargetJournal::remove(std::uint64_t stream)
{
    if (entries_.erase(stream) > 0) {
        write();
    }
}

void TargetJournal::clear()
{
    if (!std::exchange(entries_, {}).empty()) {
        write();
    }
}

std::optional<std::string> TargetJournal::leftTarget(std::uint64_t stream,
                                                     const std::string& node) const
{
    const auto found = std::find_if(left_.begin(), left_.end(), [&](const Entry& entry) {
        return entry.stream == stream && entry.node == node;
    });
    return found == left_.end() ? std::nullopt : std::optional(found->target);
}

void TargetJournal::forgetLeft()
{
    left_.clear();
    std::error_code ignored; // What can't be removed is read and forgotten again next time.
    for (const auto& file : std::exchange(leftFiles_, {})) {
        fs::remove(file, ignored);
    }
}

void TargetJournal::write()
{
    if (folder_.empty()) {
        return;
    }
    bool isWritten = false;
    if (entries_.empty()) {
        isWritten = unlink(file_.c_str()) == 0 || errno == ENOENT;
    } else {
        auto json = nlohmann::json::array();
        for (const auto& [stream, entry] : entries_) {
            json.push_back({{"stream", stream}, {"node", entry.node}, {"target", entry.target}});
        }
        isWritten = writeFile(dumpJson(json));
    }
    if (!isWritten && !std::exchange(hasFailed_, true)) {
        log_.error("The apps' own outputs can't be kept in {}: {}. After a crash apps play on the "
                   "default output.",
                   folder_.native(),
                   std::generic_category().message(errno));
    }
}

bool TargetJournal::writeFile(const std::string& text) const
{
    const fs::path fresh = file_.native() + ".new";
    constexpr int flags = O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC | O_NOFOLLOW;
    FileDescriptor file(open(fresh.c_str(), flags, 0600));
    if (!file && errno == ENOENT && makePrivateFolder(folder_)) {
        file = FileDescriptor(open(fresh.c_str(), flags, 0600));
    }
    return file && ::write(file.get(), text.data(), text.size()) == std::ssize(text) &&
           rename(fresh.c_str(), file_.c_str()) == 0;
}

} // namespace fadewell::pipewire
