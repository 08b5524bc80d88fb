#include "ui/style/MenuModel.h"

#include <algorithm>
#include <utility>

namespace fadewell {

void MenuModel::setEntries(std::vector<Entry> entries)
{
    beginResetModel();
    entries_ = std::move(entries);
    endResetModel();
    emit countChanged();
}

int MenuModel::checkedIndex() const
{
    const auto checked = std::ranges::find(entries_, true, &Entry::isChecked);
    return checked == entries_.end() ? -1 : static_cast<int>(checked - entries_.begin());
}

void MenuModel::choose(int index)
{
    if (index >= 0 && index < count()) {
        // The action may fill the menu anew.
        if (const auto action = entries_[static_cast<std::size_t>(index)].choose) {
            action();
        }
    }
}

int MenuModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : count();
}

QVariant MenuModel::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid)) {
        return {};
    }
    const auto& entry = entries_[static_cast<std::size_t>(index.row())];
    switch (role) {
    case title:
        return entry.title;
    case symbol:
        return entry.symbol;
    case shortcut:
        return entry.shortcut;
    case isCheckable:
        return entry.isCheckable;
    case isChecked:
        return entry.isChecked;
    case hasDividerBelow:
        return entry.hasDividerBelow;
    default:
        return {};
    }
}

QHash<int, QByteArray> MenuModel::roleNames() const
{
    return {{title, "title"},
            {symbol, "symbol"},
            {shortcut, "shortcut"},
            {isCheckable, "isCheckable"},
            {isChecked, "isChecked"},
            {hasDividerBelow, "hasDividerBelow"}};
}

} // namespace fadewell
