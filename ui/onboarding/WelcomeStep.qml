import QtQuick
import Fadewell.Onboarding
import Fadewell.Style

OnboardingStep {
    id: root

    defaultButton: next

    StepTexts {
        title: qsTr("Welcome to Fadewell")
        explanation: qsTr("Set the volume of each app, and keep your calls clear.")
    }

    Column {
        width: parent.width
        topPadding: 4
        bottomPadding: 4
        spacing: 14

        FeatureRow {
            symbol: "speaker.wave.2"
            title: qsTr("Volume for Each App")
            text: qsTr("Turn any app down, or send it to other speakers or headphones.")
        }

        FeatureRow {
            symbol: "phone"
            title: qsTr("Calls Come First")
            text: qsTr("When a call starts, other apps get quieter by themselves.")
        }

        FeatureRow {
            symbol: "mic"
            title: qsTr("Your Microphone at a Glance")
            text: qsTr("See which apps use it, and turn it off for all of them at once.")
        }
    }

    PushButton {
        id: next

        objectName: "continue"
        anchors.horizontalCenter: parent.horizontalCenter
        name: qsTr("Continue")
        isDefault: true
        onClicked: root.onboarding.goOn()
    }
}
