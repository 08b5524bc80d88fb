#pragma once

#include "ui/style/Appearance.h"

#include <QColor>
#include <QObject>
#include <QtQml/qqmlregistration.h>

class QJSEngine;
class QQmlEngine;

namespace fadewell {

/// Colours, text sizes and motion of all windows. One for the whole program. [main thread]
class Theme final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(bool isDark READ isDark NOTIFY changed)
    Q_PROPERTY(bool reduceMotion READ reduceMotion NOTIFY changed)
    Q_PROPERTY(int motionDuration READ motionDuration NOTIFY changed)
    Q_PROPERTY(double bodySize READ bodySize NOTIFY changed)
    Q_PROPERTY(double subheadlineSize READ subheadlineSize NOTIFY changed)
    Q_PROPERTY(double captionSize READ captionSize NOTIFY changed)
    Q_PROPERTY(double iconSize READ iconSize NOTIFY changed)
    Q_PROPERTY(QColor window READ window NOTIFY changed)
    Q_PROPERTY(QColor raised READ raised NOTIFY changed)
    Q_PROPERTY(QColor border READ border NOTIFY changed)
    Q_PROPERTY(QColor divider READ divider NOTIFY changed)
    Q_PROPERTY(QColor text READ text NOTIFY changed)
    Q_PROPERTY(QColor secondaryText READ secondaryText NOTIFY changed)
    Q_PROPERTY(QColor track READ track NOTIFY changed)
    Q_PROPERTY(QColor knob READ knob NOTIFY changed)
    Q_PROPERTY(QColor knobBorder READ knobBorder NOTIFY changed)
    Q_PROPERTY(QColor hover READ hover NOTIFY changed)
    Q_PROPERTY(QColor pressed READ pressed NOTIFY changed)
    Q_PROPERTY(QColor accent READ accent NOTIFY changed)
    Q_PROPERTY(QColor destructive READ destructive NOTIFY changed)
    Q_PROPERTY(double titleSize READ titleSize NOTIFY changed)
    Q_PROPERTY(QColor onAccent READ onAccent NOTIFY changed)
    Q_PROPERTY(bool isMirrored READ isMirrored CONSTANT)

public:
    static Theme& instance();

    /// For the QML engine.
    static Theme* create(QQmlEngine* engine, QJSEngine* scriptEngine);

    /// Takes over what the desktop says, now and whenever it changes. Once is enough.
    void followDesktop();

    /// Shows this instead.
    void setAppearance(const Appearance& appearance);
    [[nodiscard]] const Appearance& appearance() const { return appearance_; }

    [[nodiscard]] bool isDark() const { return appearance_.isDark; }
    [[nodiscard]] bool reduceMotion() const { return appearance_.reduceMotion; }
    /// Whether the language is written from right to left.
    [[nodiscard]] bool isMirrored() const;
    /// Milliseconds; 0 while motion is to be reduced.
    [[nodiscard]] int motionDuration() const { return reduceMotion() ? 0 : 140; }

    // Pixels that grow with the desktop's text size.
    [[nodiscard]] double titleSize() const { return scaled(24); }
    [[nodiscard]] double bodySize() const { return scaled(13.5); }
    [[nodiscard]] double subheadlineSize() const { return scaled(12); }
    [[nodiscard]] double captionSize() const { return scaled(11.5); }
    [[nodiscard]] double iconSize() const { return scaled(24); }

    [[nodiscard]] QColor window() const { return pick("#f7f7f8", "#262628"); }
    [[nodiscard]] QColor raised() const { return pick("#ffffff", "#343437"); }
    [[nodiscard]] QColor border() const;
    [[nodiscard]] QColor divider() const { return overlay(0.10F, 0.12F); }
    [[nodiscard]] QColor text() const { return pick("#1c1c1e", "#f2f2f4"); }
    [[nodiscard]] QColor secondaryText() const;
    [[nodiscard]] QColor track() const;
    [[nodiscard]] QColor knob() const { return pick("#ffffff", "#ececee"); }
    [[nodiscard]] QColor knobBorder() const;
    [[nodiscard]] QColor hover() const { return overlay(0.06F, 0.09F); }
    [[nodiscard]] QColor pressed() const { return overlay(0.12F, 0.16F); }
    [[nodiscard]] QColor accent() const;
    /// For what loses something.
    [[nodiscard]] QColor destructive() const { return pick("#c8232c", "#ff6b66"); }
    /// For what stands on the accent colour.
    [[nodiscard]] QColor onAccent() const;

signals:
    void changed();

private:
    Theme() = default;
    [[nodiscard]] double scaled(double pixels) const { return pixels * appearance_.textScale; }
    [[nodiscard]] QColor pick(const char* light, const char* dark) const;
    [[nodiscard]] QColor overlay(float onLight, float onDark) const;

    Appearance appearance_;
    bool followsDesktop_ = false;
};

} // namespace fadewell
