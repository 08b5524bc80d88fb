#pragma once

#include "base/Logger.h"
#include "platform/linux/ProcessInstance.h"

#include <cstdint>
#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace fadewell::pipewire {

/// Where the streams that this run has taken were to play, in a file that outlives a crash, and
/// what earlier runs left in theirs. Belongs to the connection's lock.
///
/// Each run has a file of its own, named after its process, so that no two ever write the same. It
/// lives as long as the login session, as the streams do. What can't be written is logged once: a
/// crash would then send the apps to the default output.
class TargetJournal final {
public:
    /// A stream with an output of its own. A stream that follows the default needs no entry.
    struct Entry {
        std::uint64_t stream = 0; ///< serial of the node
        std::string node;         ///< its node.name: serials begin again with the server
        std::string target;       ///< node.name of the output, or what else its target said

        bool operator==(const Entry&) const = default;
    };

    /// Reads what runs that have ended left in `folder`, which is made when it is needed; empty
    /// keeps everything in memory.
    explicit TargetJournal(std::filesystem::path folder,
                           ProcessInstance owner = ProcessInstance::own());
    ~TargetJournal() = default;
    TargetJournal(const TargetJournal&) = delete;
    TargetJournal& operator=(const TargetJournal&) = delete;

    [[nodiscard]] const ProcessInstance& owner() const { return owner_; }

    /// On the file system when it returns, though not on a disk; takes well below a millisecond.
    void record(const Entry& entry);
    void remove(std::uint64_t stream);
    void clear();

    /// The target of this very stream in an earlier run's file.
    [[nodiscard]] std::optional<std::string> leftTarget(std::uint64_t stream,
                                                        const std::string& node) const;
    /// Forgets what earlier runs left; their files go.
    void forgetLeft();

private:
    void readLeft();
    void write();
    [[nodiscard]] bool writeFile(const std::string& text) const;

    std::filesystem::path folder_;
    ProcessInstance owner_;
    std::filesystem::path file_;
    std::map<std::uint64_t, Entry> entries_; ///< by stream
    std::vector<Entry> left_;
    std::vector<std::filesystem::path> leftFiles_;
    bool hasFailed_ = false;
    Logger log_{"taps"};
};

} // namespace fadewell::pipewire
