import QtQuick
import Fadewell.Forms
import Fadewell.Onboarding
import Fadewell.Style

OnboardingStep {
    id: root

    readonly property string withoutTray: qsTr("This desktop has no tray for Fadewell’s icon. Choose “Open Mixer” in Fadewell’s entry among your apps to change the volume of each app. You can set keyboard shortcuts in Settings.")

    defaultButton: done

    Column {
        width: parent.width
        spacing: 6

        StepTexts {
            title: qsTr("You’re All Set")
        }

        // The sentence around the picture of the icon. It is the translators' and not another
        // program's, so that it may be more than plain text.
        Text {
            width: parent.width
            text: root.onboarding.isTrayMissing ? root.withoutTray
                  : PlatformTexts.iconPlace.arg("<img src=\"" + icon.source + "\" width=\"" + icon.size + "\" height=\""
                                                + icon.size + "\" align=\"middle\">")
            textFormat: Text.StyledText
            wrapMode: Text.Wrap
            horizontalAlignment: Text.AlignHCenter
            color: Theme.secondaryText
            font.pixelSize: Theme.bodySize
            Accessible.role: Accessible.StaticText
            Accessible.name: root.onboarding.isTrayMissing ? root.withoutTray
                             : PlatformTexts.iconPlace.arg(qsTr("its icon"))

            Symbol {
                id: icon

                visible: false
                size: Math.round(Theme.bodySize * 1.25)
                name: "slider.vertical.3"
                color: Theme.secondaryText
            }
        }
    }

    FormSection {
        visible: root.onboarding.hasLoginItem

        FormSwitch {
            title: qsTr("Open at Login")
            isOn: root.onboarding.opensAtLogin
            onSwitched: isOn => root.onboarding.setOpensAtLogin(isOn)
        }
    }

    PushButton {
        id: done

        objectName: "done"
        anchors.horizontalCenter: parent.horizontalCenter
        name: qsTr("Done")
        isDefault: true
        onClicked: root.onboarding.finish()
    }
}
