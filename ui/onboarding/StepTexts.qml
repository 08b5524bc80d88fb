import QtQuick
import Fadewell.Style

// The title of a step and what it says.
Column {
    id: root

    required property string title
    property string explanation

    width: parent ? parent.width : 0
    spacing: 6

    Text {
        width: parent.width
        text: root.title
        textFormat: Text.PlainText
        wrapMode: Text.Wrap
        horizontalAlignment: Text.AlignHCenter
        color: Theme.text
        font.pixelSize: Theme.titleSize
        font.weight: Font.Bold
        Accessible.role: Accessible.Heading
        Accessible.name: text
    }

    Text {
        width: parent.width
        visible: text !== ""
        text: root.explanation
        textFormat: Text.PlainText
        wrapMode: Text.Wrap
        horizontalAlignment: Text.AlignHCenter
        color: Theme.secondaryText
        font.pixelSize: Theme.bodySize
        Accessible.role: Accessible.StaticText
        Accessible.name: text
        Accessible.ignored: !visible
    }
}
