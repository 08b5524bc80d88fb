#include "ui/wayland/LayerPlace.h"

#include <algorithm>

namespace fadewell {
namespace {

constexpr int gap = 4; // to the screen's edges and bars

} // namespace

LayerPlace
LayerPlace::of(const std::optional<QRect>& anchorRect, const QRect& screen, const QSize& size)
{
    LayerPlace place{.margins = {0, gap, gap, 0}};
    if (!anchorRect) {
        return place;
    }
    const auto center = anchorRect->center();
    if (center.y() > screen.center().y()) {
        place.edges = Qt::BottomEdge | Qt::RightEdge;
        place.margins = {0, 0, gap, gap};
    }
    const int wanted = screen.right() + 1 - center.x() - size.width() / 2;
    const int most = std::max(gap, screen.width() - size.width() - gap);
    place.margins.setRight(std::clamp(wanted, gap, most));
    return place;
}

} // namespace fadewell
