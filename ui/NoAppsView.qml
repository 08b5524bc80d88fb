import QtQuick
import Fadewell.Style

// What stands in the place of the rows while there are none.
Item {
    id: root

    implicitHeight: content.implicitHeight + 20 + 16 + 8

    Column {
        id: content

        x: 24
        y: 20
        width: parent.width - 48
        spacing: 4

        Symbol {
            anchors.horizontalCenter: parent.horizontalCenter
            name: "speaker.slash"
            size: Math.round(Theme.iconSize * 1.5)
            color: Theme.secondaryText
        }

        Text {
            width: parent.width
            text: qsTr("No Apps Playing Sound")
            textFormat: Text.PlainText
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.Wrap
            color: Theme.text
            font.pixelSize: Theme.bodySize * 1.15
            font.weight: Font.DemiBold
            Accessible.role: Accessible.StaticText
            Accessible.name: text
            Accessible.ignored: !visible
        }

        Text {
            width: parent.width
            text: qsTr("Apps appear here when they play sound.")
            textFormat: Text.PlainText
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.Wrap
            color: Theme.secondaryText
            font.pixelSize: Theme.subheadlineSize
            Accessible.role: Accessible.StaticText
            Accessible.name: text
            Accessible.ignored: !visible
        }
    }
}
