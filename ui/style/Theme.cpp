#include "ui/style/Theme.h"

#include "ui/style/DesktopAppearance.h"

#include <QGuiApplication>
#include <QIcon>
#include <QQmlEngine>

namespace fadewell {

Theme& Theme::instance()
{
    static auto* const theme = new Theme; // Never deleted: outlives every engine and window.
    return *theme;
}

Theme* Theme::create(QQmlEngine* /*engine*/, QJSEngine* /*scriptEngine*/)
{
    QQmlEngine::setObjectOwnership(&instance(), QQmlEngine::CppOwnership);
    return &instance();
}

void Theme::followDesktop()
{
    if (followsDesktop_) {
        return;
    }
    followsDesktop_ = true;
    auto* desktop = new DesktopAppearance(this);
    const auto follow = [this, desktop] {
        setAppearance(desktop->current());
    };
    connect(desktop, &DesktopAppearance::changed, this, follow);
    follow();
}

void Theme::setAppearance(const Appearance& appearance)
{
    if (appearance == appearance_) {
        return;
    }
    appearance_ = appearance;
    if (!appearance_.iconTheme.isEmpty()) {
        QIcon::setThemeName(appearance_.iconTheme);
    }
    emit changed();
}

bool Theme::isMirrored() const
{
    return QGuiApplication::isRightToLeft();
}

QColor Theme::border() const
{
    return appearance_.isHighContrast ? text() : pick("#d2d2d6", "#47474b");
}

QColor Theme::secondaryText() const
{
    return appearance_.isHighContrast ? text() : pick("#68686d", "#a5a5ab");
}

QColor Theme::track() const
{
    return appearance_.isHighContrast ? overlay(0.45F, 0.5F) : overlay(0.14F, 0.2F);
}

QColor Theme::knobBorder() const
{
    return appearance_.isHighContrast ? text() : QColor::fromRgbF(0, 0, 0, isDark() ? 0.25F : 0.2F);
}

QColor Theme::accent() const
{
    return appearance_.accent.value_or(pick("#1a73e8", "#3d84f0"));
}

QColor Theme::onAccent() const
{
    return accent().lightnessF() > 0.7F ? QColor(Qt::black) : QColor(Qt::white);
}

QColor Theme::pick(const char* light, const char* dark) const
{
    return QColor(QLatin1String(isDark() ? dark : light));
}

QColor Theme::overlay(float onLight, float onDark) const
{
    return isDark() ? QColor::fromRgbF(1, 1, 1, onDark) : QColor::fromRgbF(0, 0, 0, onLight);
}

} // namespace fadewell
