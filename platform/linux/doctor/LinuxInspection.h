#pragma once

#include "app/SystemInspection.h"

#include <memory>
#include <string>
#include <vector>

namespace fadewell {

class PipeWireHardware;

/// What this machine and session tell of themselves. [any thread]
class LinuxInspection final : public SystemInspection {
public:
    /// Looks through a connection that there is.
    explicit LinuxInspection(std::shared_ptr<PipeWireHardware> hardware);

    /// Looks through a connection of its own, where the sound server lets it have one; takes up to
    /// some seconds.
    [[nodiscard]] static std::shared_ptr<LinuxInspection> connect();

    [[nodiscard]] Versions versions() override;
    [[nodiscard]] std::vector<Finding> findings() override;
    [[nodiscard]] std::vector<SoundNode> nodes() override;
    [[nodiscard]] std::string nodesProblem() override { return problem_; }
    [[nodiscard]] StoredSettings settings() override;
    [[nodiscard]] Owner owner() override;

private:
    LinuxInspection(std::shared_ptr<PipeWireHardware> hardware, std::string problem);

    std::shared_ptr<PipeWireHardware> hardware_; ///< absent without a sound server
    std::string problem_;                        ///< why
};

} // namespace fadewell
