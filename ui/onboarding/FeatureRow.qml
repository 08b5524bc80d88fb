import QtQuick
import Fadewell.Style

// What Fadewell does, in a sentence.
Row {
    id: root

    required property string symbol
    required property string title
    required property string text
    readonly property real symbolWidth: Math.round(32 * Theme.bodySize / 13.5)

    width: parent ? parent.width : 0
    spacing: 14
    Accessible.role: Accessible.StaticText
    Accessible.name: title + ", " + text

    Item {
        width: root.symbolWidth
        height: picture.height

        Symbol {
            id: picture

            anchors.horizontalCenter: parent.horizontalCenter
            size: Math.round(root.symbolWidth * 0.82)
            name: root.symbol
            color: Theme.accent
        }
    }

    Column {
        width: parent.width - root.symbolWidth - root.spacing
        spacing: 2

        Text {
            width: parent.width
            text: root.title
            textFormat: Text.PlainText
            wrapMode: Text.Wrap
            horizontalAlignment: Text.AlignLeft
            color: Theme.text
            font.pixelSize: Theme.bodySize
            font.weight: Font.DemiBold
            Accessible.ignored: true
        }

        Text {
            width: parent.width
            text: root.text
            textFormat: Text.PlainText
            wrapMode: Text.Wrap
            horizontalAlignment: Text.AlignLeft
            color: Theme.secondaryText
            font.pixelSize: Theme.bodySize
            Accessible.ignored: true
        }
    }
}
