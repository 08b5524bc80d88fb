#pragma once

#include "base/SerialQueue.h"
#include "base/UserDefaults.h"

#include <filesystem>
#include <memory>

namespace fadewell {

/// Settings in one file that a person can read (see SettingsFormat).
///
/// A write is readable at once and on disk within 100 ms; writes in between go together. When it
/// can't be written the failure is logged once, memory keeps the values, and the next write tries
/// again; a spare file elsewhere keeps them over a crash meanwhile, as it does while a flush waits
/// for a slow disk. A file that can't be read is kept aside under another name, which the log
/// tells; a copy beside the spare file has what was stored last.
///
/// Several processes may share the file: each takes a lock to write, reads what the others have
/// written since, and replaces only the keys that it changed itself. What the others wrote is
/// readable here from then on. [any thread but the writer's queue]
class FileUserDefaults final : public UserDefaults {
public:
    /// Reads the file, and `spare`, which exists only while the file isn't written, in a folder
    /// that the system empties when it starts. `writer` is a queue of its own; nothing wakes it
    /// while nothing changes.
    FileUserDefaults(const std::filesystem::path& file,
                     const std::filesystem::path& spare,
                     std::shared_ptr<SerialQueue> writer);
    /// Writes what is not yet on disk.
    ~FileUserDefaults() override;
    FileUserDefaults(const FileUserDefaults&) = delete;
    FileUserDefaults& operator=(const FileUserDefaults&) = delete;

    [[nodiscard]] std::optional<Value> value(std::string_view key) const override;
    void set(std::string_view key, Value value) override;
    void remove(std::string_view key) override;
    /// Those of values of an unknown type too.
    [[nodiscard]] std::vector<std::string> keys() const override;
    void flush() override;

private:
    struct State;

    void changed();

    std::shared_ptr<State> state_;
    std::shared_ptr<SerialQueue> writer_;
};

} // namespace fadewell
