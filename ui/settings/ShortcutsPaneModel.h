#pragma once

#include "base/Subscription.h"
#include "ui/settings/SettingsParts.h"
#include "ui/shortcuts/RecorderField.h"

#include <QObject>
#include <QString>
#include <QStringList>
#include <QVariantList>
#include <QtQml/qqmlregistration.h>

namespace fadewell {

/// What the shortcuts pane reads. [main thread]
class ShortcutsPaneModel final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the settings window")
    Q_PROPERTY(bool canRecord READ canRecord NOTIFY changed)
    Q_PROPERTY(bool isAssignedByDesktop READ isAssignedByDesktop NOTIFY changed)
    Q_PROPERTY(QVariantList toggles READ toggles CONSTANT)
    Q_PROPERTY(QVariantList steps READ steps CONSTANT)
    Q_PROPERTY(QStringList assigned READ assigned NOTIFY changed)

public:
    explicit ShortcutsPaneModel(const SettingsParts& parts);

    /// Whether this desktop lets the program choose combinations.
    [[nodiscard]] bool canRecord() const;
    /// Whether the desktop chooses them.
    [[nodiscard]] bool isAssignedByDesktop() const;

    // The fields of the two sections; empty without keyboard shortcuts.
    [[nodiscard]] QVariantList toggles() const { return fields(0, 2); }
    [[nodiscard]] QVariantList steps() const { return fields(2, 4); }

    /// What the desktop has assigned, in the order of all fields.
    [[nodiscard]] QStringList assigned() const;

signals:
    void changed();

private:
    [[nodiscard]] bool offers(shortcuts::HotKeyService::Support support) const;
    [[nodiscard]] QVariantList fields(std::size_t first, std::size_t end) const;

    const SettingsParts& parts_;
    std::vector<RecorderField*> fields_; ///< children
    std::vector<Subscription> observations_;
};

} // namespace fadewell
