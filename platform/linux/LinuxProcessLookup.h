#pragma once

#include "audio/ProcessLookup.h"
#include "platform/linux/identity/AppIdentities.h"

#include <memory>
#include <utility>

namespace fadewell {

/// Parents as the kernel knows them, responsible processes as AppIdentities found them. [any
/// thread]
class LinuxProcessLookup final : public ProcessLookup {
public:
    explicit LinuxProcessLookup(std::shared_ptr<AppIdentities> identities)
        : identities_(std::move(identities))
    {}

    [[nodiscard]] std::optional<std::int32_t> parent(std::int32_t pid) override
    {
        return identities_->parent(pid);
    }
    [[nodiscard]] bool knowsResponsibleProcesses() const override { return true; }
    [[nodiscard]] std::int32_t responsible(std::int32_t pid) override
    {
        return identities_->responsible(pid);
    }

private:
    std::shared_ptr<AppIdentities> identities_;
};

} // namespace fadewell
