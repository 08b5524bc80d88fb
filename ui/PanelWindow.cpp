#include "ui/PanelWindow.h"

#include "ui/AppIconProvider.h"
#include "ui/Compositing.h"
#include "ui/DropDown.h"
#include "ui/PanelModel.h"
#include "ui/style/Language.h"
#include "ui/style/Style.h"
#include "ui/style/Theme.h"

#include <QEvent>
#include <QGuiApplication>
#include <QMouseEvent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickView>
#include <QQuickWindow>
#include <QSGRendererInterface>
#include <QScreen>

#include <algorithm>
#include <utility>

extern void qml_register_types_Fadewell_Panel();

namespace fadewell {
namespace {

// A click on the tray icon takes the panel's focus, which hides it, before it asks to toggle it.
constexpr qint64 sameClickMilliseconds = 400;
constexpr int gap = 4; // between the icon and the panel

bool isX11()
{
    return QGuiApplication::platformName() == QLatin1String("xcb");
}

} // namespace

PanelWindow::PanelWindow(Parts parts, Actions actions, QObject* parent)
    : QObject(parent)
{
    installLanguage();
    panel_ = std::make_unique<PanelModel>(std::move(parts), std::move(actions));
    Theme::instance().followDesktop(); // Known by the time of the first click.
    connect(panel_.get(), &PanelModel::closeRequested, this, &PanelWindow::hide);
}

PanelWindow::~PanelWindow() = default;

void PanelWindow::show(const std::optional<QRect>& anchorRect)
{
    open(anchorRect, anchorRect.has_value());
}

void PanelWindow::open(const std::optional<QRect>& anchorRect, bool isDropDown)
{
    // A window that was once given a place keeps it; a new one is placed by the desktop.
    const bool keepsOldPlace = anchorRect_ && !isDropDown && !isVisible();
    if (!view_ || keepsOldPlace) {
        load();
    }
    if (!isVisible()) {
        anchorRect_ = anchorRect;
        isDropDown_ = isDropDown;
        present();
    }
    view_->raise();
    view_->requestActivate();
}

void PanelWindow::hide()
{
    if (isVisible()) {
        QEvent left(QEvent::Leave); // Not every desktop tells a window that goes.
        QCoreApplication::sendEvent(view_.get(), &left);
        if (std::exchange(isDropped_, false)) {
            dropDown_->close();
        }
        view_->hide();
        panel_->setActive(false);
        emit visibilityChanged(false);
    }
}

void PanelWindow::toggle(const std::optional<QRect>& anchorRect)
{
    if (isVisible()) {
        hide();
    } else if (sinceClickOutside_.isValid() &&
               !sinceClickOutside_.hasExpired(sameClickMilliseconds)) {
        sinceClickOutside_.invalidate();
    } else {
        if (!view_) {
            load();
        }
        open(anchorRect, anchorRect || dropDown_);
    }
}

bool PanelWindow::isVisible() const
{
    return view_ && view_->isVisible();
}

void PanelWindow::load()
{
    qml_register_types_Fadewell_Panel();
    if (!qEnvironmentVariableIsSet("QT_QUICK_BACKEND")) {
        // Fast enough for a small panel, with a third of the memory that a GPU's drivers take.
        QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    }
    view_ = std::make_unique<QQuickView>();
    installStyle(*view_->engine());
    view_->engine()->addImageProvider(QStringLiteral("appicon"), new AppIconProvider);
    view_->installEventFilter(this);
    view_->setColor(Qt::transparent);
    view_->setTitle(QStringLiteral("Fadewell"));
    view_->setInitialProperties({{"panel", QVariant::fromValue(panel_.get())}});
    view_->setSource(QUrl(QStringLiteral("qrc:/qml/Fadewell/Panel/MixerPanel.qml")));
    connect(
        view_->rootObject(), &QQuickItem::implicitHeightChanged, this, [this] { fitToContent(); });
    dropDown_ = DropDown::create();
    if (dropDown_) {
        connect(dropDown_.get(), &DropDown::clickedOutside, this, &PanelWindow::hide);
        connect(dropDown_.get(), &DropDown::dismissed, this, &PanelWindow::hide);
    }
}

void PanelWindow::present()
{
    const auto dropDown = Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint;
    view_->setFlags(isDropDown_ ? dropDown : Qt::Window | Qt::WindowCloseButtonHint);
    view_->rootObject()->setProperty("hasRoundCorners", isDropDown_ && isComposited());
    panel_->setActive(true);
    fitToContent();
    isDropped_ = isDropDown_ && dropDown_ && dropDown_->open(*view_, anchorRect_);
    view_->show();
    emit visibilityChanged(true);
}

void PanelWindow::fitToContent()
{
    const auto* content = view_->rootObject();
    const QSize size(qCeil(content->width()), qCeil(content->implicitHeight()));
    view_->setMinimumSize(size);
    view_->setMaximumSize(size);
    view_->resize(size);
    if (isDropped_) {
        dropDown_->fit();
    } else if (anchorRect_) {
        place();
    }
}

void PanelWindow::place()
{
    const auto* screen = QGuiApplication::screenAt(anchorRect_->center());
    const auto area = (screen ? screen : QGuiApplication::primaryScreen())->availableGeometry();
    const bool below = anchorRect_->center().y() < area.center().y();
    const int x = anchorRect_->center().x() - view_->width() / 2;
    const int y = below ? anchorRect_->bottom() + gap : anchorRect_->top() - gap - view_->height();
    view_->setPosition(
        std::clamp(x, area.left(), std::max(area.left(), area.right() + 1 - view_->width())),
        std::clamp(y, area.top(), std::max(area.top(), area.bottom() + 1 - view_->height())));
}

bool PanelWindow::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Close) {
        hide();
        return true;
    }
    if (isDropDown_) {
        watchForClickOutside(*event);
    }
    return QObject::eventFilter(watched, event);
}

void PanelWindow::watchForClickOutside(const QEvent& event)
{
    if (event.type() == QEvent::Expose && view_->isExposed() && isX11()) {
        // A click on what takes no focus (a desktop, a bar) only shows with the pointer grabbed.
        view_->setMouseGrabEnabled(true);
    }
    const bool isOutside =
        event.type() == QEvent::MouseButtonPress &&
        !QRect(QPoint(), view_->size())
             .contains(static_cast<const QMouseEvent&>(event).position().toPoint());
    if (event.type() == QEvent::FocusOut || isOutside) {
        hideByClickOutside();
    }
}

void PanelWindow::hideByClickOutside()
{
    if (isVisible()) {
        hide();
        sinceClickOutside_.start();
    }
}

} // namespace fadewell
