#pragma once

#include <string>

namespace fadewell::integration {

/// Prints a line for each measurement, with its goal.
class PathTable {
public:
    PathTable();

    /// Judged.
    void
    row(const std::string& name, const std::string& value, const std::string& goal, bool isMet);
    /// For comparison.
    void row(const std::string& name, const std::string& value);
    [[nodiscard]] int failed() const { return failed_; }

private:
    int failed_ = 0;
};

} // namespace fadewell::integration
