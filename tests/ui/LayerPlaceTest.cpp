#include "ui/wayland/LayerPlace.h"

#include <gtest/gtest.h>

namespace fadewell {
namespace {

TEST(LayerPlaceTest, ThePanelHangsAtItsIconAndStaysOnItsScreen)
{
    constexpr auto topRight = Qt::TopEdge | Qt::RightEdge;
    constexpr auto bottomRight = Qt::BottomEdge | Qt::RightEdge;
    const QSize panel(320, 400);
    const QRect screen(1000, 0, 1280, 800); // the right one of two
    const struct {
        std::optional<QRect> anchor;
        QRect screen;
        LayerPlace expected;
    } cases[] = {
        {{}, screen, {topRight, {0, 4, 4, 0}}},
        {QRect(1990, 0, 20, 20), screen, {topRight, {0, 4, 121, 0}}},
        {QRect(1990, 780, 20, 20), screen, {bottomRight, {0, 0, 121, 4}}},
        {QRect(2260, 0, 20, 20), screen, {topRight, {0, 4, 4, 0}}},
        {QRect(1000, 0, 20, 20), screen, {topRight, {0, 4, 956, 0}}},
        {QRect(0, 0, 20, 20), QRect(0, 0, 240, 320), {topRight, {0, 4, 4, 0}}},
    };
    for (const auto& each : cases) {
        const auto place = LayerPlace::of(each.anchor, each.screen, panel);
        EXPECT_EQ(place.edges, each.expected.edges);
        EXPECT_EQ(place.margins, each.expected.margins)
            << place.margins.right() << ' ' << place.margins.top();
    }
}

} // namespace
} // namespace fadewell
