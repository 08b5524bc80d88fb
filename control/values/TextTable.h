#pragma once

#include <string>
#include <vector>

namespace fadewell {

/// Columns of text for a terminal, each as wide as its widest cell. Cells are made plain.
class TextTable final {
public:
    enum class Align {
        left,
        right
    };
    struct Column {
        std::string title;
        Align align = Align::left;
    };

    explicit TextTable(std::vector<Column> columns);

    /// One cell per column; a missing one is empty.
    void add(std::vector<std::string> cells);

    /// Title line and rows, each ended by a line feed, without trailing blanks.
    [[nodiscard]] std::string render() const;

private:
    [[nodiscard]] std::string line(const std::vector<std::string>& cells) const;

    std::vector<Column> columns_;
    std::vector<int> widths_;
    std::vector<std::vector<std::string>> rows_;
};

} // namespace fadewell
