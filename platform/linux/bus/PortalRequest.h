#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QObject>
#include <QString>
#include <QVariantMap>

#include <functional>

namespace fadewell {

/// One question to the desktop portal, which answers later, perhaps after it asked the user.
/// Deletes itself after the answer; a parent that goes before takes it along. [main thread]
class PortalRequest final : public QObject {
    Q_OBJECT

public:
    static constexpr const char* service = "org.freedesktop.portal.Desktop";
    static constexpr const char* path = "/org/freedesktop/portal/desktop";

    /// `isGranted` is false when it was refused or failed; `problem` then says why, in English.
    using Answered =
        std::function<void(bool isGranted, const QVariantMap& results, const QString& problem)>;

    /// Puts a "handle_token" into `options`, which become the last argument, and sends the call.
    static void send(QObject* parent,
                     const QDBusConnection& bus,
                     QDBusMessage call,
                     QVariantMap options,
                     Answered answered);

    /// A word that no other request or session of this process has.
    [[nodiscard]] static QString newToken();

private slots:
    void responded(const QDBusMessage& message);

private:
    PortalRequest(QObject* parent, QDBusConnection bus, Answered answered);
    void listen(const QString& requestPath);
    void finish(bool isGranted, const QVariantMap& results, const QString& problem);

    QDBusConnection bus_;
    Answered answered_;
    QString listening_;
};

} // namespace fadewell
