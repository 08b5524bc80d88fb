#include "ui/AppRowsModel.h"

#include <QSet>

#include <algorithm>

namespace fadewell {

void AppRowsModel::setRows(const std::vector<AppRowView>& rows)
{
    const int before = count();
    removeAllBut(rows);
    for (std::size_t at = 0; at < rows.size(); ++at) {
        place(rows[at], static_cast<int>(at));
    }
    if (count() != before) {
        emit countChanged();
    }
}

void AppRowsModel::removeAllBut(const std::vector<AppRowView>& rows)
{
    QSet<QString> kept;
    for (const auto& row : rows) {
        kept.insert(row.id);
    }
    for (int at = count() - 1; at >= 0; --at) {
        if (!kept.contains(rows_[static_cast<std::size_t>(at)].id)) {
            beginRemoveRows({}, at, at);
            rows_.erase(rows_.begin() + at);
            endRemoveRows();
        }
    }
}

/// Everything before `at` is right already.
void AppRowsModel::place(const AppRowView& row, int at)
{
    const auto found = std::find_if(
        rows_.begin() + at, rows_.end(), [&](const auto& each) { return each.id == row.id; });
    if (found == rows_.end()) {
        insert(row, at);
        return;
    }
    move(static_cast<int>(found - rows_.begin()), at);
    auto& shown = rows_[static_cast<std::size_t>(at)];
    if (shown != row) {
        shown = row;
        emit dataChanged(index(at), index(at));
    }
}

void AppRowsModel::insert(const AppRowView& row, int at)
{
    beginInsertRows({}, at, at);
    rows_.insert(rows_.begin() + at, row);
    endInsertRows();
}

void AppRowsModel::move(int from, int to)
{
    if (from != to) {
        beginMoveRows({}, from, from, {}, to);
        std::rotate(rows_.begin() + to, rows_.begin() + from, rows_.begin() + from + 1);
        endMoveRows();
    }
}

int AppRowsModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : count();
}

QVariant AppRowsModel::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid)) {
        return {};
    }
    const auto& row = rows_[static_cast<std::size_t>(index.row())];
    switch (role) {
    case appID:
        return row.id;
    case name:
        return row.name;
    case icon:
        return row.icon;
    case volume:
        return row.volume;
    case percent:
        return row.percent;
    case isMuted:
        return row.isMuted;
    case waves:
        return row.waves;
    case badge:
        return row.badge;
    case outputSymbol:
        return row.outputSymbol;
    case outputName:
        return row.outputName;
    case isRouted:
        return row.isRouted;
    case obstacle:
        return row.obstacle;
    default:
        return {};
    }
}

QHash<int, QByteArray> AppRowsModel::roleNames() const
{
    return {{appID, "appID"},
            {name, "name"},
            {icon, "icon"},
            {volume, "volume"},
            {percent, "percent"},
            {isMuted, "isMuted"},
            {waves, "waves"},
            {badge, "badge"},
            {outputSymbol, "outputSymbol"},
            {outputName, "outputName"},
            {isRouted, "isRouted"},
            {obstacle, "obstacle"}};
}

} // namespace fadewell
