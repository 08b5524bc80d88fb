#include "tests/ui/tray/FakeWatcher.h"

#include <QDBusMessage>

#include <utility>

namespace fadewell {
namespace {

constexpr const char* name = "org.kde.StatusNotifierWatcher";

} // namespace

FakeWatcher::FakeWatcher(QDBusConnection connection, int refusals)
    : connection_(std::move(connection))
    , refusals_(refusals)
{
    connection_.registerObject(
        "/StatusNotifierWatcher", this, QDBusConnection::ExportScriptableSlots);
    connection_.registerService(name);
}

FakeWatcher::~FakeWatcher()
{
    connection_.unregisterService(name);
    connection_.unregisterObject("/StatusNotifierWatcher");
}

void FakeWatcher::RegisterStatusNotifierItem(const QString& service, const QDBusMessage& message)
{
    items.append(service);
    if (items.size() <= refusals_) {
        message.setDelayedReply(true);
        connection_.send(message.createErrorReply(QDBusError::Failed, "not yet"));
    }
}

} // namespace fadewell
