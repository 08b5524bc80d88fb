#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace fadewell::demo {

/// One app as the table shows it.
struct AppRow {
    std::string name{};
    bool isPlaying = false;
    double volume = 1.0; ///< 0 to 1
    bool isMuted = false;
    std::string output{}; ///< "system" when it follows the default
    std::string badge{};  ///< "in call", "lowered" or nothing
    bool operator==(const AppRow&) const = default;
};

/// The lines of `fadewellctl watch --json`, or of `apps --json` on one line, as they arrive. [one
/// thread]
class AppsFeed {
public:
    /// Takes bytes as they come; a line that isn't a list of apps leaves the rows as they are.
    void add(std::string_view bytes);

    /// Absent until the first line.
    const std::optional<std::vector<AppRow>>& rows() const { return rows_; }

private:
    void readLine(std::string_view line);

    std::string pending_;
    std::optional<std::vector<AppRow>> rows_;
};

} // namespace fadewell::demo
