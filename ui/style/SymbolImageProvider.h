#pragma once

#include <QQuickImageProvider>

namespace fadewell {

/// Draws the bundled symbols as "image://symbol/NAME/WAVES/RRGGBBAA", sharp at any size.
///
/// WAVES is how many of a symbol's waves are lit, 0 to 3; the others are faint.
class SymbolImageProvider final : public QQuickImageProvider {
public:
    SymbolImageProvider();
    QImage requestImage(const QString& id, QSize* size, const QSize& requestedSize) override;

    /// A symbol in one colour; empty when there is none of this name.
    [[nodiscard]] static QImage
    draw(const QString& name, int waves, const QColor& color, const QSize& size);
};

} // namespace fadewell
