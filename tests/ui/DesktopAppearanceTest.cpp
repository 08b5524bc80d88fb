#include "ui/style/DesktopAppearance.h"

#include <gtest/gtest.h>

namespace fadewell {
namespace {

TEST(DesktopAppearanceTest, TakesOverWhatDesktopsSayAndNothingElse)
{
    constexpr auto common = "org.freedesktop.appearance";
    constexpr auto gnome = "org.gnome.desktop.interface";
    constexpr auto kde = "org.kde.kdeglobals.KDE";
    struct Case {
        const char* group;
        const char* key;
        QVariant value;
        Appearance expected;
    };
    const Case cases[] = {
        {common, "color-scheme", 1U, {.isDark = true, .reduceMotion = true}},
        {common, "color-scheme", 2U, {.reduceMotion = true}},
        {common, "color-scheme", QVariantList(), {.reduceMotion = true}},
        {common, "contrast", 1U, {.isHighContrast = true, .reduceMotion = true}},
        {common, "accent-color", "red", {.reduceMotion = true}},
        {gnome, "color-scheme", 1U, {.reduceMotion = true}},
        {gnome, "enable-animations", true, {}},
        {kde, "AnimationDurationFactor", "1", {}},
        {kde, "AnimationDurationFactor", "0", {.reduceMotion = true}},
        {gnome, "text-scaling-factor", 1.25, {.reduceMotion = true, .textScale = 1.25}},
        {gnome, "text-scaling-factor", 99.0, {.reduceMotion = true, .textScale = 3}},
        {gnome, "text-scaling-factor", "large", {.reduceMotion = true}}};
    for (const auto& [group, key, value, expected] : cases) {
        EXPECT_EQ(withSetting({.reduceMotion = true}, group, key, value), expected)
            << group << ' ' << key << ' ' << value.toString().toStdString();
    }
}

} // namespace
} // namespace fadewell
