import QtQuick
import Fadewell.Forms
import Fadewell.Settings
import Fadewell.Style

FormPage {
    id: root

    required property CallsPaneModel pane

    Accessible.role: Accessible.Pane
    Accessible.name: qsTr("Calls")

    FormSection {
        FormSwitch {
            title: qsTr("Lower Other Apps During Calls")
            caption: PlatformTexts.callMode
            isOn: root.pane.isAutomatic
            onSwitched: isOn => root.pane.setAutomatic(isOn)
        }

        FormValue {
            title: qsTr("Volume of Other Apps")
            caption: qsTr("Their own volume stays as you set it.")
            valueItem: [
                Row {
                    spacing: 8

                    LevelSlider {
                        width: 200
                        name: qsTr("Volume of Other Apps")
                        level: root.pane.level
                        onLevelChosen: level => root.pane.setLevel(level)
                    }

                    Text {
                        anchors.verticalCenter: parent.verticalCenter
                        width: widest.width
                        text: root.pane.levelText
                        textFormat: Text.PlainText
                        horizontalAlignment: Text.AlignRight
                        color: Theme.secondaryText
                        font.pixelSize: Theme.subheadlineSize
                        Accessible.ignored: true

                        TextMetrics {
                            id: widest

                            text: root.pane.widestLevelText
                            font.pixelSize: Theme.subheadlineSize
                        }
                    }
                }
            ]
        }
    }

    FormSection {
        visible: root.pane.apps.count > 0
        title: qsTr("Detect Calls In")
        footer: qsTr("Browsers count when a website uses the microphone, as in a video call.")

        Repeater {
            model: root.pane.apps

            CallAppRow {
                onSwitched: isOn => root.pane.setCounts(bundleID, isOn)
            }
        }
    }
}
