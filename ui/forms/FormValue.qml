import QtQuick
import Fadewell.Style

// A row with a name at its beginning and a value, or something to press, at its end.
FormRow {
    id: root

    required property string title
    property string value
    property string spokenValue: value
    property string caption
    property alias valueItem: aside.data

    spacing: 4

    Item {
        width: parent.width
        implicitHeight: Math.max(label.implicitHeight, valueText.implicitHeight,
                                 aside.implicitHeight)

        Text {
            id: label

            anchors.left: parent.left
            anchors.verticalCenter: parent.verticalCenter
            text: root.title
            textFormat: Text.PlainText
            color: Theme.text
            font.pixelSize: Theme.bodySize
            Accessible.role: Accessible.StaticText
            Accessible.name: root.spokenValue === "" ? root.title : root.title + ": " + root.spokenValue
            Accessible.ignored: !visible
        }

        Text {
            id: valueText

            anchors.left: label.right
            anchors.leftMargin: 16
            anchors.right: aside.left
            anchors.verticalCenter: parent.verticalCenter
            text: root.value
            textFormat: Text.PlainText
            elide: Text.ElideRight
            horizontalAlignment: Text.AlignRight
            color: Theme.secondaryText
            font.pixelSize: Theme.bodySize
            Accessible.ignored: true
        }

        Row {
            id: aside

            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            spacing: 6
        }
    }

    FormNote {
        width: parent.width
        visible: text !== ""
        text: root.caption
    }
}
