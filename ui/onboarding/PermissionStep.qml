import QtQuick
import Fadewell.Forms
import Fadewell.Onboarding
import Fadewell.Style

OnboardingStep {
    id: root

    readonly property int permission: onboarding.permission
    readonly property bool isOpen: permission === OnboardingModel.Permission.unknown
                                   || permission === OnboardingModel.Permission.asking

    defaultButton: isOpen ? allow : next

    StepTexts {
        title: qsTr("Allow Access to App Sound")
        explanation: PlatformTexts.onboardingWhyAudio
    }

    Item {
        width: parent.width
        height: status.implicitHeight
        visible: root.permission !== OnboardingModel.Permission.unknown

        Row {
            id: status

            anchors.horizontalCenter: parent.horizontalCenter
            spacing: 8

            Spinner {
                anchors.verticalCenter: parent.verticalCenter
                visible: root.permission === OnboardingModel.Permission.asking
                name: PlatformTexts.onboardingAsking
            }

            Symbol {
                anchors.verticalCenter: parent.verticalCenter
                visible: root.permission === OnboardingModel.Permission.granted
                size: 18
                name: "checkmark.circle.fill"
                color: Theme.accent
            }

            Text {
                anchors.verticalCenter: parent.verticalCenter
                width: Math.min(implicitWidth, root.width)
                text: root.permission === OnboardingModel.Permission.asking ? PlatformTexts.onboardingAsking
                      : root.permission === OnboardingModel.Permission.granted ? qsTr("Allowed")
                      : PlatformTexts.onboardingLater
                textFormat: Text.PlainText
                wrapMode: Text.Wrap
                horizontalAlignment: Text.AlignHCenter
                color: root.permission === OnboardingModel.Permission.granted ? Theme.text : Theme.secondaryText
                font.pixelSize: Theme.bodySize
                Accessible.role: Accessible.StaticText
                Accessible.name: text
                Accessible.ignored: !visible
            }
        }
    }

    Row {
        anchors.horizontalCenter: parent.horizontalCenter
        spacing: 10

        PushButton {
            objectName: "notNow"
            visible: root.isOpen
            name: qsTr("Not Now")
            onClicked: root.onboarding.goOn()
        }

        PushButton {
            id: allow

            objectName: "allow"
            visible: root.isOpen
            name: qsTr("Allow Access")
            isDefault: true
            onClicked: root.onboarding.allowAccess()
        }

        PushButton {
            visible: root.permission === OnboardingModel.Permission.notGranted
            name: root.onboarding.permissionTitle
            onClicked: root.onboarding.openPermission()
        }

        PushButton {
            id: next

            objectName: "continueAllowed"
            visible: !root.isOpen
            name: qsTr("Continue")
            isDefault: true
            onClicked: root.onboarding.goOn()
        }
    }
}
