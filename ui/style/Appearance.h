#pragma once

#include <QColor>
#include <QString>

#include <optional>

namespace fadewell {

/// How the desktop wants programs to look.
struct Appearance {
    bool isDark = false;
    bool isHighContrast = false;
    bool reduceMotion = false;
    double textScale = 1; ///< 0.5 to 3
    std::optional<QColor> accent{};
    QString iconTheme{}; ///< empty: unknown

    bool operator==(const Appearance&) const = default;
};

} // namespace fadewell
