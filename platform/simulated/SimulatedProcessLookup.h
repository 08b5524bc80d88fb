#pragma once

#include "audio/ProcessLookup.h"

#include <map>
#include <mutex>

namespace fadewell {

/// Relations as scripted. [any thread]
class SimulatedProcessLookup final : public ProcessLookup {
public:
    void setParent(std::int32_t pid, std::int32_t parent);
    void setResponsible(std::int32_t pid, std::int32_t responsible);
    void setKnowsResponsibleProcesses(bool knows);

    /// How many times anyone asked for a parent or for a responsible process.
    [[nodiscard]] int questions() const;

    [[nodiscard]] std::optional<std::int32_t> parent(std::int32_t pid) override;
    [[nodiscard]] bool knowsResponsibleProcesses() const override;
    [[nodiscard]] std::int32_t responsible(std::int32_t pid) override;

private:
    mutable std::mutex mutex_;
    std::map<std::int32_t, std::int32_t> parents_;
    std::map<std::int32_t, std::int32_t> responsible_;
    bool knowsResponsibleProcesses_ = true;
    int questions_ = 0;
};

} // namespace fadewell
