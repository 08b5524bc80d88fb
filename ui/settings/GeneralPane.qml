import QtQuick
import Fadewell.Forms
import Fadewell.Settings
import Fadewell.Style

FormPage {
    id: root

    required property GeneralPaneModel pane

    Accessible.role: Accessible.Pane
    Accessible.name: qsTr("General")

    Component.onCompleted: pane.appear()
    Component.onDestruction: pane.disappear()

    FormSection {
        FormSwitch {
            visible: root.pane.hasLoginItem
            title: qsTr("Open at Login")
            isOn: root.pane.opensAtLogin
            onSwitched: isOn => root.pane.setOpensAtLogin(isOn)

            FormNote {
                width: parent.width
                visible: root.pane.needsLoginApproval
                text: PlatformTexts.allowLogin
            }

            PushButton {
                anchors.left: parent.left
                visible: root.pane.needsLoginApproval
                name: root.pane.loginItemsTitle
                onClicked: root.pane.openLoginItems()
            }
        }

        FormSwitch {
            title: PlatformTexts.showIcon
            caption: qsTr("When it’s hidden, open Fadewell again to see these settings. Your shortcuts keep working.")
            isOn: root.pane.showsIcon
            onSwitched: isOn => root.pane.setShowsIcon(isOn)
        }

        FormRow {
            visible: root.pane.isTrayMissing

            Row {
                width: parent.width
                spacing: 8

                Symbol {
                    size: 18
                    name: "exclamationmark.triangle"
                    color: Theme.secondaryText
                }

                FormNote {
                    width: parent.width - 26
                    text: qsTr("This desktop shows no tray icons at the moment. In GNOME, the extension “AppIndicator and KStatusNotifierItem Support” adds them. Until then, “Open Mixer” in Fadewell’s entry among your apps opens the mixer.")
                }
            }

            PushButton {
                anchors.left: parent.left
                anchors.leftMargin: 26
                name: qsTr("Open Mixer")
                onClicked: root.pane.openMixer()
            }
        }
    }

    FormSection {
        title: qsTr("Permissions")

        FormValue {
            title: qsTr("System Audio Recording")
            spokenValue: root.pane.hasPermission ? allowed.text : ""
            caption: PlatformTexts.whyAudio
            valueItem: [
                Spinner {
                    visible: !root.pane.isPermissionKnown
                    name: qsTr("Checking")
                },
                Symbol {
                    visible: root.pane.hasPermission
                    size: 18
                    name: "checkmark.circle.fill"
                    color: Theme.secondaryText
                },
                Text {
                    id: allowed

                    anchors.verticalCenter: parent.verticalCenter
                    visible: root.pane.hasPermission
                    text: qsTr("Allowed")
                    textFormat: Text.PlainText
                    color: Theme.secondaryText
                    font.pixelSize: Theme.bodySize
                    Accessible.ignored: true
                },
                PushButton {
                    visible: root.pane.isPermissionKnown && !root.pane.hasPermission
                    name: root.pane.permissionTitle
                    onClicked: root.pane.openPermission()
                }
            ]
        }
    }

    FormSection {
        title: qsTr("About")

        FormValue {
            title: qsTr("Version")
            value: root.pane.version
        }

        FormValue {
            visible: value !== ""
            title: qsTr("Sound System")
            value: root.pane.soundServer
        }

        FormRow {
            visible: root.pane.hasDiagnostics

            PushButton {
                anchors.left: parent.left
                name: qsTr("Diagnostics…")
                onClicked: root.pane.showDiagnostics()
            }
        }

        FormRow {
            PushButton {
                anchors.left: parent.left
                name: qsTr("About Fadewell")
                onClicked: root.pane.showAbout()
            }
        }
    }
}
