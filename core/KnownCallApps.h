#pragma once

#include <set>
#include <span>
#include <string>
#include <string_view>

namespace fadewell {

/// The apps whose microphone use counts as a call, in the order in which lists show them.
struct KnownCallApps {
    KnownCallApps() = delete;

    [[nodiscard]] static std::span<const std::string_view> callApps();
    [[nodiscard]] static std::span<const std::string_view> browsers();

    /// Both lists together, made anew.
    [[nodiscard]] static std::set<std::string> all();
};

} // namespace fadewell
