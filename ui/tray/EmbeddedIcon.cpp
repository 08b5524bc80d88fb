#include "ui/tray/EmbeddedIcon.h"

#include <QAction>
#include <QCoreApplication>
#include <QGuiApplication>
#include <QImage>
#include <QPixmap>
#include <QScreen>
#include <QWheelEvent>

#include <algorithm>
#include <chrono>

namespace fadewell {

using namespace std::chrono_literals;

EmbeddedIcon::EmbeddedIcon(TrayActions& actions)
    : actions_(actions)
{
    setContextMenu(&menu_);
    // Qt doesn't tell when a tray takes the icon. That its window, made only then, is painted does.
    QCoreApplication::instance()->installEventFilter(this);
    settled_.setSingleShot(true);
    settled_.setInterval(1s);
    connect(&settled_, &QTimer::timeout, this, [this] {
        const auto before = seen_.value_or(thought_);
        seen_ = visibleGround();
        if (seen_.value_or(thought_) != before) {
            draw();
        }
    });
    connect(this, &QSystemTrayIcon::activated, this, [this](ActivationReason reason) {
        if (reason == Trigger) {
            actions_.activate(geometry().isValid() ? std::optional(geometry()) : std::nullopt);
        } else if (reason == MiddleClick) {
            actions_.activateSecondary();
        }
    });
}

void EmbeddedIcon::setAppearance(const MenuBarIcon& icon, TrayIcons::Ground ground)
{
    icon_ = icon;
    thought_ = ground;
    draw();
}

bool EmbeddedIcon::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Paint && watched->inherits("QSystemTrayIconSys")) {
        settled_.start();
    }
    return QSystemTrayIcon::eventFilter(watched, event);
}

void EmbeddedIcon::draw()
{
    setIcon(TrayIcons::icon(icon_->symbol, seen_.value_or(thought_)));
    setToolTip(icon_->label);
}

std::optional<TrayIcons::Ground> EmbeddedIcon::visibleGround() const
{
    const auto place = geometry();
    auto* screen = QGuiApplication::screenAt(place.center());
    if (!place.isValid() || screen == nullptr) {
        return std::nullopt;
    }
    const auto corner = place.topLeft() - screen->geometry().topLeft();
    const auto pixel = screen->grabWindow(0, corner.x(), corner.y(), 1, 1).toImage();
    if (pixel.isNull()) {
        return std::nullopt;
    }
    constexpr int middle = 128;
    return pixel.pixelColor(0, 0).lightness() < middle ? TrayIcons::Ground::dark
                                                       : TrayIcons::Ground::light;
}

void EmbeddedIcon::setEntries(const std::vector<TrayMenuEntry>& entries)
{
    const bool areTheSame = std::equal(
        entries.begin(), entries.end(), entries_.begin(), entries_.end(), [](auto& a, auto& b) {
            return a.id == b.id;
        });
    entries_ = entries;
    if (!areTheSame) {
        rebuild();
    }
    const auto actions = menu_.actions();
    for (std::size_t index = 0; index < entries_.size(); ++index) {
        auto* action = actions[static_cast<qsizetype>(index)];
        action->setEnabled(entries_[index].isEnabled);
        action->setChecked(entries_[index].isChecked.value_or(false));
    }
}

void EmbeddedIcon::rebuild()
{
    menu_.clear();
    for (const auto& entry : entries_) {
        if (entry.command == TrayCommand::none) {
            menu_.addSeparator();
            continue;
        }
        auto* action = menu_.addAction(QString(entry.text).replace('&', "&&"));
        action->setCheckable(entry.isChecked.has_value());
        // Later: what it does may rebuild the menu that it stands in.
        connect(
            action,
            &QAction::triggered,
            this,
            [this, command = entry.command] { actions_.run(command); },
            Qt::QueuedConnection);
    }
}

bool EmbeddedIcon::event(QEvent* event)
{
    if (event->type() == QEvent::Wheel) {
        actions_.step(steps_.take(static_cast<QWheelEvent*>(event)->angleDelta().y()));
        return true;
    }
    return QSystemTrayIcon::event(event);
}

} // namespace fadewell
