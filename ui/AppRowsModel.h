#pragma once

#include "ui/AppRowView.h"

#include <QAbstractListModel>
#include <QtQml/qqmlregistration.h>

#include <vector>

namespace fadewell {

/// The rows of the panel. Changes reach the views one by one, so that a row stays itself. [main
/// thread]
class AppRowsModel final : public QAbstractListModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the panel's model")
    Q_PROPERTY(int count READ count NOTIFY countChanged)

public:
    enum Role {
        appID = Qt::UserRole,
        name,
        icon,
        volume,
        percent,
        isMuted,
        waves,
        badge,
        outputSymbol,
        outputName,
        isRouted,
        obstacle,
    };

    explicit AppRowsModel(QObject* parent)
        : QAbstractListModel(parent)
    {}

    /// The identifiers must be unique.
    void setRows(const std::vector<AppRowView>& rows);

    [[nodiscard]] int count() const { return static_cast<int>(rows_.size()); }
    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

signals:
    void countChanged();

private:
    void removeAllBut(const std::vector<AppRowView>& rows);
    void place(const AppRowView& row, int at);
    void insert(const AppRowView& row, int at);
    void move(int from, int to);

    std::vector<AppRowView> rows_;
};

} // namespace fadewell
