import QtQuick
import Fadewell.Style

// Rows in a box, with what they are about above and a remark below.
Column {
    id: root

    property string title
    property string footer
    property alias footerItem: aside.data // beside the remark
    default property alias rows: rowsColumn.data

    anchors.left: parent ? parent.left : undefined
    anchors.right: parent ? parent.right : undefined
    spacing: 6

    Text {
        anchors.left: parent.left
        anchors.leftMargin: 12
        visible: text !== ""
        text: root.title
        textFormat: Text.PlainText
        color: Theme.text
        font.pixelSize: Theme.bodySize
        font.weight: Font.DemiBold
        Accessible.role: Accessible.Heading
        Accessible.name: text
        Accessible.ignored: !visible
    }

    Rectangle {
        width: parent.width
        height: rowsColumn.implicitHeight
        radius: 10
        color: Theme.raised
        border.color: Theme.border

        FormColumn {
            id: rowsColumn
        }
    }

    Item {
        width: parent.width
        visible: root.footer !== "" || aside.children.length > 0
        implicitHeight: Math.max(note.implicitHeight, aside.childrenRect.height)

        FormNote {
            id: note

            anchors.left: parent.left
            anchors.leftMargin: 12
            anchors.right: aside.left
            anchors.rightMargin: 12
            anchors.top: parent.top
            anchors.topMargin: 1
            text: root.footer
        }

        Item {
            id: aside

            anchors.right: parent.right
            width: childrenRect.width
            height: childrenRect.height
        }
    }
}
