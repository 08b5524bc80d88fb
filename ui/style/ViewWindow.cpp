#include "ui/style/ViewWindow.h"

#include <QEvent>
#include <QMetaObject>
#include <QQuickItem>
#include <QQuickView>
#include <QScreen>

#include <algorithm>

namespace fadewell {

ViewWindow::ViewWindow() = default;
ViewWindow::~ViewWindow() = default;

void ViewWindow::show()
{
    if (!view_) {
        view_ = std::make_unique<QQuickView>();
        view_->installEventFilter(this);
        view_->setFlags(Qt::Dialog | Qt::WindowTitleHint | Qt::WindowCloseButtonHint);
        view_->setResizeMode(QQuickView::SizeRootObjectToView);
        model_ = load(*view_);
    }
    view_->show();
    view_->raise();
    view_->requestActivate();
}

void ViewWindow::fix(QQuickView& view, const QSize& size)
{
    view.setMinimumSize(size);
    view.setMaximumSize(size);
    view.resize(size);
}

void ViewWindow::fitToContent(QQuickView& view, std::optional<int> mostHeight)
{
    const auto fit = [&view, mostHeight] {
        constexpr int titleBar = 60; // at most
        const auto* content = view.rootObject();
        const int available = view.screen()->availableGeometry().height() - titleBar;
        const int whole = qCeil(content->implicitHeight());
        const int height = mostHeight ? std::min({whole, *mostHeight, available}) : whole;
        fix(view, {qCeil(content->implicitWidth()), height});
    };
    connect(view.rootObject(), &QQuickItem::implicitHeightChanged, &view, fit);
    fit();
}

void ViewWindow::unload()
{
    view_.reset();
    model_.reset();
}

bool ViewWindow::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == view_.get() && event->type() == QEvent::Close) {
        aboutToClose();
        // After the window is done with this event.
        QMetaObject::invokeMethod(this, &ViewWindow::closeView, Qt::QueuedConnection);
    }
    return QObject::eventFilter(watched, event);
}

void ViewWindow::closeView()
{
    if (view_ && !view_->isVisible()) { // Nobody has opened it again meanwhile.
        unload();
        emit closed();
    }
}

} // namespace fadewell
