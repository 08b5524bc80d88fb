#pragma once

#include "ui/tray/TrayAppearance.h"

#include <QIcon>
#include <QString>

namespace fadewell {

/// The pictures of the tray icon, drawn from the bundled symbols. [main thread]
class TrayIcons final {
public:
    /// What the tray looks like.
    enum class Ground {
        light,
        dark
    };

    /// The symbol's name in the icon theme, whose pictures hosts may paint in a colour of their
    /// own.
    [[nodiscard]] static QString themeName(const QString& symbol);

    /// The folder with Fadewell's icon theme beside this program; empty when there is none.
    [[nodiscard]] static QString themePath();

    /// In the sizes that trays use; empty for an unknown symbol.
    [[nodiscard]] static TrayPixmaps pixmaps(const QString& symbol, Ground ground);
    [[nodiscard]] static QIcon icon(const QString& symbol, Ground ground);
};

} // namespace fadewell
