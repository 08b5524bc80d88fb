#pragma once

#include "app/RememberedApp.h"

#include <QAbstractListModel>
#include <QString>
#include <QtQml/qqmlregistration.h>

#include <vector>

namespace fadewell {

/// The apps with saved settings. [main thread]
class RememberedAppsModel final : public QAbstractListModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the apps pane")
    Q_PROPERTY(int count READ count NOTIFY countChanged)

public:
    enum Role {
        appID = Qt::UserRole,
        appName,
        icon,
        summary,
    };

    explicit RememberedAppsModel(QObject* parent)
        : QAbstractListModel(parent)
    {}

    /// Rows that stay keep the keyboard.
    void setApps(const std::vector<RememberedApp>& apps);
    [[nodiscard]] int count() const { return static_cast<int>(apps_.size()); }

    /// What is saved, such as "40%, Muted, Headphones".
    [[nodiscard]] static QString summaryOf(const AppAudioSettings& settings);

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

signals:
    void countChanged();

private:
    void removeMissing(const std::vector<RememberedApp>& apps);

    std::vector<RememberedApp> apps_;
};

} // namespace fadewell
