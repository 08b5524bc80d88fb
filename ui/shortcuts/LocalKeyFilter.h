#pragma once

#include "shortcuts/KeyboardShortcuts.h"

#include <QObject>

#include <memory>

class QKeyEvent;

namespace fadewell {

/// Shows the keys of this program's windows to the shortcuts before the windows get them: to a
/// recorder, and while a menu is open, which it tells them. Costs nothing while nobody wants them.
/// [main thread]
class LocalKeyFilter final : public QObject {
public:
    /// Needs the application object, which it leaves with its own end.
    explicit LocalKeyFilter(std::shared_ptr<shortcuts::KeyboardShortcuts> shortcuts);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    [[nodiscard]] bool deliver(const QKeyEvent& event);

    std::shared_ptr<shortcuts::KeyboardShortcuts> shortcuts_;
};

} // namespace fadewell
