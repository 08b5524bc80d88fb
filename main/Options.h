#pragma once

#include <optional>

namespace fadewell {

/// What fadewell was started with.
struct Options {
    bool isHeadless = false;
    bool isShowing = false; ///< opens the mixer, also of an instance that runs already
    bool isVerbose = false;
    bool isUnsupervised = false;
    bool isBackground = false; ///< started with the session: nobody waits for a window

    /// Absent when there is nothing to run: `exitStatus` then says how that ended.
    [[nodiscard]] static std::optional<Options>
    parse(int argc, const char* const* argv, int& exitStatus);
};

} // namespace fadewell
