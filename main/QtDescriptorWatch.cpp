#include "main/QtDescriptorWatch.h"

#include <QCoreApplication>
#include <QPointer>
#include <QSocketNotifier>

#include <utility>

namespace fadewell {

DescriptorWatch qtDescriptorWatch()
{
    return [](int descriptor, std::function<void()> readable) {
        const QPointer<QSocketNotifier> notifier(
            new QSocketNotifier(descriptor, QSocketNotifier::Read, QCoreApplication::instance()));
        QObject::connect(notifier,
                         &QSocketNotifier::activated,
                         notifier,
                         [readable = std::move(readable)] { readable(); });
        return Subscription([notifier] {
            if (notifier) {
                notifier->setEnabled(false); // Now: the descriptor may be closed next.
                notifier->deleteLater();     // It may be what calls this.
            }
        });
    };
}

} // namespace fadewell
