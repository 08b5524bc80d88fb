#pragma once

#include "ui/onboarding/OnboardingParts.h"

#include <QObject>

#include <memory>

class QQuickView;

namespace fadewell {

class OnboardingModel;

/// Introduces Fadewell. Closing it, in whichever way and at whichever step, is for good. [main
/// thread, with a QGuiApplication]
class OnboardingWindow final : public QObject {
    Q_OBJECT

public:
    explicit OnboardingWindow(OnboardingParts parts);
    ~OnboardingWindow() override;

    /// Opens it, or brings it to the front.
    void show();
    [[nodiscard]] bool isOpen() const { return view_ != nullptr; }

    /// Set once it has been closed.
    static constexpr const char* completedKey = "hasCompletedOnboarding";

signals:
    void closed();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void load();
    void fitToContent();

    OnboardingParts parts_;
    std::unique_ptr<OnboardingModel> model_;
    std::unique_ptr<QQuickView> view_; ///< absent while it is closed; uses `model_`
};

} // namespace fadewell
