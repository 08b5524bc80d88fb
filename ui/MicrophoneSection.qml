import QtQuick
import Fadewell.Panel
import Fadewell.Style

Item {
    id: root

    required property PanelModel panel

    implicitHeight: content.implicitHeight + 20

    Column {
        id: content

        x: 14
        y: 8
        width: parent.width - 28
        spacing: 6

        SwitchRow {
            width: parent.width
            height: implicitHeight
            enabled: root.panel.canSwitchMicrophone
            title: qsTr("Microphone")
            caption: root.panel.microphoneCaption
            isOn: root.panel.isMicrophoneOn
            onSwitched: isOn => root.panel.setMicrophoneOn(isOn)
        }

        Item {
            width: parent.width
            height: slider.height
            visible: root.panel.hasMicrophoneVolume

            Item {
                id: frame

                anchors.left: parent.left
                width: Theme.iconSize
                height: parent.height

                Symbol {
                    anchors.centerIn: parent
                    name: root.panel.isMicrophoneOn ? "mic.fill" : "mic.slash.fill"
                    color: Theme.secondaryText
                    size: Math.round(Theme.iconSize * 0.75)
                }
            }

            LevelSlider {
                id: slider

                anchors.left: frame.right
                anchors.leftMargin: 8
                anchors.right: parent.right
                name: qsTr("Input Volume")
                level: root.panel.microphoneVolume
                onLevelChosen: level => root.panel.setMicrophoneVolume(level)
            }
        }

        Text {
            width: parent.width
            visible: text !== ""
            text: root.panel.microphoneUsers
            textFormat: Text.PlainText
            wrapMode: Text.Wrap
            elide: Text.ElideRight
            maximumLineCount: 3
            horizontalAlignment: Text.AlignLeft
            color: Theme.secondaryText
            font.pixelSize: Theme.captionSize
            Accessible.role: Accessible.StaticText
            Accessible.name: text
            Accessible.ignored: !visible
        }
    }
}
