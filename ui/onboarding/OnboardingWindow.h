#pragma once

#include "ui/onboarding/OnboardingParts.h"
#include "ui/style/ViewWindow.h"

namespace fadewell {

/// Introduces Fadewell. Closing it, in whichever way and at whichever step, is for good. [main
/// thread, with a QGuiApplication]
class OnboardingWindow final : public ViewWindow {
    Q_OBJECT

public:
    explicit OnboardingWindow(OnboardingParts parts);

    /// Set once it has been closed.
    static constexpr const char* completedKey = "hasCompletedOnboarding";

protected:
    std::unique_ptr<QObject> load(QQuickView& view) override;
    void aboutToClose() override;

private:
    OnboardingParts parts_;
};

} // namespace fadewell
