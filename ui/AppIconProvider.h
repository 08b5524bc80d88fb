#pragma once

#include "app/AppIcon.h"

#include <QQuickImageProvider>
#include <QString>

namespace fadewell {

/// Turns the icons of apps into pictures: by the desktop's icon theme, also what sandboxed apps
/// export into it, or from a file; a generic picture where neither leads to one. [main thread]
class AppIconProvider final : public QQuickImageProvider {
public:
    AppIconProvider();
    QPixmap requestPixmap(const QString& id, QSize* size, const QSize& requestedSize) override;

    /// Where views find the picture of an icon.
    [[nodiscard]] static QString address(const AppIcon& icon);
};

} // namespace fadewell
