#pragma once

#include "ui/forms/SystemPage.h"

#include <QObject>
#include <QString>
#include <QStringList>

#include <memory>

class QQuickView;

namespace fadewell {

/// Explains how to grant what no page of the system's settings grants here. [main thread]
class HelpWindow final : public QObject {
    Q_OBJECT

public:
    HelpWindow();
    ~HelpWindow() override;

    /// Opens it, or brings it to the front, with this explanation.
    void show(SystemPage page);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    std::unique_ptr<QQuickView> view_; ///< absent while it is closed
    SystemPage page_ = SystemPage::audioPermission;
};

} // namespace fadewell
