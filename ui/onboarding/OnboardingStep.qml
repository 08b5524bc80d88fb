import QtQuick
import Fadewell.Onboarding
import Fadewell.Style

// What one step shows below the icon.
Column {
    required property OnboardingModel onboarding
    required property PushButton defaultButton // what the return key presses

    spacing: 20
}
