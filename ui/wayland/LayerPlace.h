#pragma once

#include <QMargins>
#include <QRect>
#include <QSize>

#include <optional>

namespace fadewell {

/// Where a panel drops down on a screen, as layers know places: edges and distances from them. What
/// bars take away at an edge the compositor adds.
struct LayerPlace {
    Qt::Edges edges = Qt::TopEdge | Qt::RightEdge;
    QMargins margins{};

    /// Near a rectangle in global coordinates, centred on it as far as the screen allows; without
    /// one in the top right corner.
    [[nodiscard]] static LayerPlace
    of(const std::optional<QRect>& anchorRect, const QRect& screen, const QSize& size);

    bool operator==(const LayerPlace&) const = default;
};

} // namespace fadewell
