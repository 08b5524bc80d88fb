#pragma once

#include "ui/style/Appearance.h"

#include <QDBusMessage>
#include <QObject>
#include <QVariant>

namespace fadewell {

/// Follows what the desktop's settings say about looks, through its settings portal. [main thread]
///
/// Without a portal the palette decides between light and dark. Waits for nothing.
class DesktopAppearance final : public QObject {
    Q_OBJECT

public:
    explicit DesktopAppearance(QObject* parent = nullptr);

    [[nodiscard]] const Appearance& current() const { return appearance_; }

signals:
    void changed();

private slots:
    void settingChanged(const QDBusMessage& message);

private:
    void readAll();
    void apply(const QString& group, const QString& key, const QVariant& value);
    void publish(const Appearance& appearance);

    Appearance appearance_;
};

/// `appearance` after the portal has told one setting; what is unknown or mistyped changes nothing.
[[nodiscard]] Appearance
withSetting(Appearance appearance, const QString& group, const QString& key, const QVariant& value);

} // namespace fadewell
