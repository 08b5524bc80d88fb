#include "control/values/TextTable.h"

#include "control/values/PlainText.h"

#include <algorithm>
#include <utility>

namespace fadewell {

TextTable::TextTable(std::vector<Column> columns)
    : columns_(std::move(columns))
{
    for (const auto& column : columns_) {
        widths_.push_back(displayWidth(column.title));
    }
}

void TextTable::add(std::vector<std::string> cells)
{
    cells.resize(columns_.size());
    for (std::size_t index = 0; index < cells.size(); ++index) {
        cells[index] = plainText(cells[index]);
        widths_[index] = std::max(widths_[index], displayWidth(cells[index]));
    }
    rows_.push_back(std::move(cells));
}

std::string TextTable::line(const std::vector<std::string>& cells) const
{
    std::string text;
    for (std::size_t index = 0; index < cells.size(); ++index) {
        const auto padding = static_cast<std::size_t>(widths_[index] - displayWidth(cells[index]));
        const std::string blanks(padding, ' ');
        text += index == 0 ? "" : "  ";
        text +=
            columns_[index].align == Align::right ? blanks + cells[index] : cells[index] + blanks;
    }
    text.erase(text.find_last_not_of(' ') + 1);
    return text + '\n';
}

std::string TextTable::render() const
{
    std::vector<std::string> titles;
    for (const auto& column : columns_) {
        titles.push_back(column.title);
    }
    std::string text = line(titles);
    for (const auto& row : rows_) {
        text += line(row);
    }
    return text;
}

} // namespace fadewell
