#include "platform/linux/bus/OnScreenMessages.h"

#include "base/Logger.h"

#include <QDBusError>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QVariantMap>

#include <utility>

namespace fadewell {
namespace {

constexpr const char* service = "org.freedesktop.Notifications";
constexpr const char* path = "/org/freedesktop/Notifications";
constexpr int duration = 1500; // milliseconds on the screen

QDBusMessage notification(uint replaced, const QString& text)
{
    // The body may hold markup, the summary never: names of other programs go only there.
    const QVariantMap hints{{"transient", true},
                            {"urgency", QVariant::fromValue<uchar>(1)},
                            {"desktop-entry", "app.fadewell.Fadewell"},
                            {"x-canonical-private-synchronous", "volume"},
                            {"suppress-sound", true}};
    auto message = QDBusMessage::createMethodCall(service, path, service, "Notify");
    message << "Fadewell" << replaced << "audio-volume-high" << text << QString() << QStringList()
            << hints << duration;
    return message;
}

} // namespace

OnScreenMessages::OnScreenMessages(QDBusConnection bus, std::shared_ptr<UserDefaults> defaults)
    : bus_(std::move(bus))
    , defaults_(std::move(defaults))
{}

void OnScreenMessages::show(std::string_view text)
{
    if (!defaults_->get<bool>(enabledKey).value_or(true) || !bus_.isConnected()) {
        return;
    }
    waiting_ = QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
    if (isPending_) {
        return; // Only the newest matters, and it has to know what to replace.
    }
    isPending_ = true;
    const auto call = bus_.asyncCall(notification(last_, std::exchange(waiting_, {})));
    auto* watcher = new QDBusPendingCallWatcher(call, this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher] {
        const QDBusPendingReply<uint> reply = *watcher;
        watcher->deleteLater();
        isPending_ = false;
        last_ = reply.isError() ? 0 : reply.value();
        if (reply.isError() && !std::exchange(hasFailed_, true)) {
            Logger("workspace")
                .notice("No messages on the screen: {}", reply.error().message().toStdString());
        }
        if (!waiting_.isEmpty()) {
            show(waiting_.toStdString());
        }
    });
}

} // namespace fadewell
