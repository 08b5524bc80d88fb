#include "platform/simulated/SimulatedProcessLookup.h"

namespace fadewell {

void SimulatedProcessLookup::setParent(std::int32_t pid, std::int32_t parent)
{
    const std::lock_guard lock(mutex_);
    parents_[pid] = parent;
}

void SimulatedProcessLookup::setResponsible(std::int32_t pid, std::int32_t responsible)
{
    const std::lock_guard lock(mutex_);
    responsible_[pid] = responsible;
}

void SimulatedProcessLookup::setKnowsResponsibleProcesses(bool knows)
{
    const std::lock_guard lock(mutex_);
    knowsResponsibleProcesses_ = knows;
}

int SimulatedProcessLookup::questions() const
{
    const std::lock_guard lock(mutex_);
    return questions_;
}

std::optional<std::int32_t> SimulatedProcessLookup::parent(std::int32_t pid)
{
    const std::lock_guard lock(mutex_);
    ++questions_;
    const auto found = parents_.find(pid);
    return found == parents_.end() ? std::nullopt : std::optional(found->second);
}

bool SimulatedProcessLookup::knowsResponsibleProcesses() const
{
    const std::lock_guard lock(mutex_);
    return knowsResponsibleProcesses_;
}

std::int32_t SimulatedProcessLookup::responsible(std::int32_t pid)
{
    const std::lock_guard lock(mutex_);
    ++questions_;
    const auto found = responsible_.find(pid);
    return found == responsible_.end() ? 0 : found->second;
}

} // namespace fadewell
