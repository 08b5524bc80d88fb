#pragma once

#include "platform/linux/FileDescriptor.h"
#include "platform/linux/desktop/FrontWindow.h"

#include <string>
#include <string_view>

namespace fadewell {

/// The focused window of a compositor that speaks sway's protocol, asked for over its socket.
class SwayFrontWindow final : public FrontWindow {
public:
    explicit SwayFrontWindow(std::string socket);

    [[nodiscard]] bool isTold() override { return true; }
    [[nodiscard]] std::optional<Window> window() override;

    /// The focused window in a tree of containers; absent also for a tree that can't be read.
    [[nodiscard]] static std::optional<Window> focused(std::string_view tree);

private:
    [[nodiscard]] FileDescriptor connect() const;

    const std::string socket_;
};

} // namespace fadewell
