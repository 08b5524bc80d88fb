#pragma once

#include <QAbstractListModel>
#include <QString>
#include <QtQml/qqmlregistration.h>

#include <functional>
#include <vector>

namespace fadewell {

/// The entries of a menu. [main thread]
class MenuModel final : public QAbstractListModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by view models")
    Q_PROPERTY(int count READ count NOTIFY countChanged)
    Q_PROPERTY(int checkedIndex READ checkedIndex NOTIFY countChanged)

public:
    struct Entry {
        QString title{};
        QString symbol{};   ///< empty: none
        QString shortcut{}; ///< as people read it; empty: none
        bool isCheckable = false;
        bool isChecked = false;
        bool hasDividerBelow = false;
        std::function<void()> choose{};
    };

    enum Role {
        title = Qt::UserRole,
        symbol,
        shortcut,
        isCheckable,
        isChecked,
        hasDividerBelow,
    };

    explicit MenuModel(QObject* parent)
        : QAbstractListModel(parent)
    {}

    void setEntries(std::vector<Entry> entries);
    [[nodiscard]] const std::vector<Entry>& entries() const { return entries_; }
    [[nodiscard]] int count() const { return static_cast<int>(entries_.size()); }
    /// -1 when no entry is checked.
    [[nodiscard]] int checkedIndex() const;

    /// Does what the entry says; nothing outside of the menu.
    Q_INVOKABLE void choose(int index);

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

signals:
    void countChanged();

private:
    std::vector<Entry> entries_;
};

} // namespace fadewell
