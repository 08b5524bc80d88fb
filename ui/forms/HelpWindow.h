#pragma once

#include "ui/forms/SystemPage.h"
#include "ui/style/ViewWindow.h"

namespace fadewell {

/// Explains how to grant what no page of the system's settings grants here. [main thread]
class HelpWindow final : public ViewWindow {
    Q_OBJECT

public:
    /// Opens it, or brings it to the front, with this explanation.
    void show(SystemPage page);

protected:
    std::unique_ptr<QObject> load(QQuickView& view) override;

private:
    SystemPage page_ = SystemPage::audioPermission;
};

} // namespace fadewell
