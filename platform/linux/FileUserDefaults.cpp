#include "platform/linux/FileUserDefaults.h"

#include "base/Logger.h"
#include "platform/linux/SettingsFile.h"
#include "platform/linux/SettingsFormat.h"

#include <mutex>
#include <set>
#include <utility>

namespace fadewell {
namespace {

/// A slider writes at every step; half of what a write may take is left for the disk.
constexpr double coalescingDelay = 0.05;

} // namespace

struct FileUserDefaults::State {
    using Changes = std::set<std::string, std::less<>>;

    struct Found {
        bool isWritable = false; ///< nothing unreadable is in the way any more
        std::optional<SettingsFormat::Document> stored;
    };

    State(const std::filesystem::path& path, const std::filesystem::path& sparePath)
        : file(path)
        , spare(sparePath, SettingsFile::Durability::crash)
        , copy(sparePath.parent_path() / ("stored-" + sparePath.filename().native()),
               SettingsFile::Durability::crash)
    {}

    // The file is touched by the constructor and then on the writer's queue only; the spare file
    // with its mutex held.
    void load();
    void takeCopy();
    void keepCopy(const std::string& bytes) const;
    void takeUnsaved();
    void save();
    void keepUnsaved();
    void dropUnsaved();
    Found readOrSetAside();
    void adopt(SettingsFormat::Document stored, const Changes& own);
    std::optional<std::string> merge(const Changes& own);
    std::optional<std::string> writeMerged(const Changes& own);
    void report(const std::optional<std::string>& failure);

    const Logger log{"settings"};
    const SettingsFile file;
    const SettingsFile spare; ///< the keys that the file lacks; one that was removed is null
    const SettingsFile copy;  ///< what was stored last, for a file that was damaged since
    SettingsFile::Version known{.size = -2}; ///< what memory agrees with; at first, nothing
    bool hasFailed = false;

    std::mutex spareMutex;   // Before the other one.
    bool hasUnsaved = false; ///< there is a spare file

    std::mutex mutex; // All below.
    SettingsFormat::Document entries;
    Changes changes; ///< keys set or removed since the last write
    Timer pendingWrite;
};

void FileUserDefaults::State::load()
{
    if (file.read().outcome == SettingsFile::Outcome::missing) {
        return;
    }
    std::string reason;
    // Without it another process could replace the file between reading and setting aside.
    const auto lock = file.lock(reason);
    if (auto found = readOrSetAside(); found.stored) {
        entries = std::move(*found.stored);
    } else {
        takeCopy();
    }
}

void FileUserDefaults::State::takeCopy()
{
    auto stored = SettingsFormat::read(copy.read().bytes);
    if (!stored || stored->empty()) {
        return;
    }
    log.notice("What was stored last in this session is used instead");
    entries = std::move(*stored);
    for (const auto& [key, entry] : entries) {
        changes.insert(key);
    }
}

/// Failing takes only a second chance away.
void FileUserDefaults::State::keepCopy(const std::string& bytes) const
{
    std::string ignored;
    if (const auto lock = copy.lock(ignored)) {
        static_cast<void>(copy.write(bytes));
    }
}

void FileUserDefaults::State::takeUnsaved()
{
    const auto contents = spare.read();
    hasUnsaved = contents.outcome != SettingsFile::Outcome::missing;
    auto unsaved = SettingsFormat::read(contents.bytes).value_or(SettingsFormat::Document());
    for (auto& [key, entry] : unsaved) {
        changes.insert(key);
        if (entry.is_null()) {
            entries.erase(key);
        } else {
            entries.insert_or_assign(key, std::move(entry));
        }
    }
}

/// What can't be stored, or waits for a slow disk, must not be lost with a crash: it tells of a
/// microphone that is to be turned on again.
void FileUserDefaults::State::keepUnsaved()
{
    const std::lock_guard spareGuard(spareMutex);
    SettingsFormat::Document unsaved;
    {
        const std::lock_guard guard(mutex);
        for (const auto& key : changes) {
            const auto entry = entries.find(key);
            unsaved[key] = entry == entries.end() ? nlohmann::json() : entry->second;
        }
    }
    if (unsaved.empty()) {
        return;
    }
    std::string reason;
    const auto lock = spare.lock(reason);
    hasUnsaved = lock && !spare.write(SettingsFormat::write(unsaved));
}

void FileUserDefaults::State::dropUnsaved()
{
    const std::lock_guard spareGuard(spareMutex);
    {
        const std::lock_guard guard(mutex);
        if (!changes.empty()) {
            return; // It has some of them; the next write takes it away.
        }
    }
    std::error_code ignored; // Read again, it changes nothing.
    if (std::exchange(hasUnsaved, false)) {
        std::filesystem::remove(spare.path(), ignored);
    }
}

FileUserDefaults::State::Found FileUserDefaults::State::readOrSetAside()
{
    const auto version = file.version();
    const auto contents = file.read();
    if (contents.outcome == SettingsFile::Outcome::missing) {
        return {true, std::nullopt};
    }
    if (contents.outcome == SettingsFile::Outcome::read) {
        if (auto stored = SettingsFormat::read(contents.bytes)) {
            known = version;
            return {true, std::move(stored)};
        }
    }
    const auto& path = file.path().native();
    const auto reason = contents.reason.empty() ? "it is damaged" : contents.reason;
    if (const auto aside = file.setAside()) {
        log.error("The settings in {} can't be read ({}); they are kept as {}",
                  path,
                  reason,
                  aside->native());
        return {true, std::nullopt};
    }
    log.error("The settings in {} can neither be read ({}) nor moved away", path, reason);
    return {false, std::nullopt};
}

void FileUserDefaults::State::adopt(SettingsFormat::Document stored, const Changes& own)
{
    const std::lock_guard guard(mutex);
    const auto keepOwn = [&](const Changes& keys) {
        for (const auto& key : keys) {
            stored.erase(key);
            if (auto entry = entries.extract(key)) {
                stored.insert(std::move(entry));
            }
        }
    };
    keepOwn(own);
    keepOwn(changes);
    entries = std::move(stored);
}

std::optional<std::string> FileUserDefaults::State::merge(const Changes& own)
{
    if (file.version() == known) {
        return std::nullopt;
    }
    auto found = readOrSetAside();
    if (!found.isWritable) {
        return "a file that can't be read is in the way";
    }
    if (found.stored) {
        adopt(std::move(*found.stored), own);
    }
    return std::nullopt;
}

std::optional<std::string> FileUserDefaults::State::writeMerged(const Changes& own)
{
    std::string reason;
    const auto lock = file.lock(reason);
    if (!lock) {
        return reason;
    }
    if (auto failure = merge(own)) {
        return failure;
    }
    std::string bytes;
    {
        const std::lock_guard guard(mutex);
        bytes = SettingsFormat::write(entries);
    }
    auto failure = file.write(bytes);
    if (!failure) {
        known = file.version();
        keepCopy(bytes);
    }
    return failure;
}

void FileUserDefaults::State::save()
{
    Changes own;
    {
        const std::lock_guard guard(mutex);
        pendingWrite = Timer(); // A flush is ahead of it.
        own.swap(changes);
    }
    if (own.empty()) {
        return;
    }
    const auto failure = writeMerged(own);
    report(failure);
    if (!failure) {
        return dropUnsaved();
    }
    {
        const std::lock_guard guard(mutex);
        changes.merge(own);
    }
    keepUnsaved();
}

void FileUserDefaults::State::report(const std::optional<std::string>& failure)
{
    if (failure && !hasFailed) {
        log.error("The settings can't be stored in {}: {}", file.path().native(), *failure);
    } else if (!failure && hasFailed) {
        log.notice("The settings are stored again");
    }
    hasFailed = failure.has_value();
}

FileUserDefaults::FileUserDefaults(const std::filesystem::path& file,
                                   const std::filesystem::path& spare,
                                   std::shared_ptr<SerialQueue> writer)
    : state_(std::make_shared<State>(file, spare))
    , writer_(std::move(writer))
{
    state_->load();
    state_->takeUnsaved();
    if (!state_->changes.empty()) {
        changed();
    }
}

FileUserDefaults::~FileUserDefaults()
{
    flush();
}

std::optional<UserDefaults::Value> FileUserDefaults::value(std::string_view key) const
{
    const std::lock_guard guard(state_->mutex);
    const auto found = state_->entries.find(key);
    return found == state_->entries.end() ? std::nullopt : SettingsFormat::decode(found->second);
}

void FileUserDefaults::set(std::string_view key, Value value)
{
    auto entry = SettingsFormat::encode(value);
    const std::lock_guard guard(state_->mutex);
    state_->entries.insert_or_assign(std::string(key), std::move(entry));
    state_->changes.emplace(key);
    changed();
}

void FileUserDefaults::remove(std::string_view key)
{
    const std::lock_guard guard(state_->mutex);
    const auto found = state_->entries.find(key);
    if (found == state_->entries.end()) {
        return;
    }
    state_->entries.erase(found);
    state_->changes.emplace(key);
    changed();
}

// Called with the mutex held.
void FileUserDefaults::changed()
{
    if (state_->pendingWrite) {
        return;
    }
    auto write = [weak = std::weak_ptr(state_), weakQueue = std::weak_ptr(writer_)] {
        const auto queue = weakQueue.lock();
        const auto state = weak.lock();
        if (queue && state) {
            queue->assertCurrent();
            state->save();
        }
    };
    state_->pendingWrite = writer_->after(coalescingDelay, std::move(write));
}

std::vector<std::string> FileUserDefaults::keys() const
{
    const std::lock_guard guard(state_->mutex);
    std::vector<std::string> keys;
    for (const auto& [key, entry] : state_->entries) {
        keys.push_back(key);
    }
    return keys;
}

void FileUserDefaults::flush()
{
    state_->keepUnsaved(); // At once, whatever the disk takes.
    writer_->sync([this] { state_->save(); });
}

} // namespace fadewell
