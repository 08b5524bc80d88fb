#pragma once

#include <QObject>
#include <QRect>

#include <memory>
#include <optional>

class QWindow;

namespace fadewell {

/// Drops a window down at the edge of the screen where windows can't choose their place themselves.
/// [main thread]
class DropDown : public QObject {
    Q_OBJECT

public:
    /// Null where windows place themselves, or the desktop offers nothing.
    [[nodiscard]] static std::unique_ptr<DropDown> create();

    /// Prepares a hidden window, which is to be shown next: near a rectangle in global coordinates,
    /// or in the top right corner of the screen that is in use. False when the desktop refuses.
    [[nodiscard]] virtual bool open(QWindow& window, const std::optional<QRect>& anchorRect) = 0;
    /// Lets the desktop know the window's size.
    virtual void fit() = 0;
    /// Hides the window, which is an ordinary one again.
    virtual void close() = 0;

signals:
    void clickedOutside(); ///< and nobody else sees that click
    void dismissed();      ///< by the desktop
};

} // namespace fadewell
