#pragma once

#include "app/Workspace.h"
#include "core/CallModeSettings.h"

#include <QAbstractListModel>
#include <QString>
#include <QtQml/qqmlregistration.h>

#include <memory>
#include <vector>

namespace fadewell {

/// The installed ones among the apps whose microphone use counts as a call. [main thread]
class CallAppsModel final : public QAbstractListModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the calls pane")
    Q_PROPERTY(int count READ count CONSTANT)

public:
    enum Role {
        bundleID = Qt::UserRole,
        appName,
        icon,
        isOn,
    };

    /// Looks once which apps are installed.
    CallAppsModel(const std::shared_ptr<Workspace>& workspace, QObject* parent);

    void setSettings(const CallModeSettings& settings);
    [[nodiscard]] int count() const { return static_cast<int>(apps_.size()); }

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

private:
    struct Entry {
        std::string bundleID;
        QString name;
        QString icon; ///< the address of its picture
    };

    std::vector<Entry> apps_;
    std::set<std::string> excluded_;
};

} // namespace fadewell
