import QtQuick
import Fadewell.Style

// One line of a section, divided from the one above.
Item {
    id: root

    default property alias content: column.data
    property real dividerInset: 12
    property alias spacing: column.spacing

    anchors.left: parent ? parent.left : undefined
    anchors.right: parent ? parent.right : undefined
    implicitHeight: column.implicitHeight + 20

    Divider {
        anchors.left: parent.left
        anchors.leftMargin: root.dividerInset
        anchors.right: parent.right
        anchors.rightMargin: 12
        visible: root.y > 0
    }

    Column {
        id: column

        anchors.left: parent.left
        anchors.right: parent.right
        anchors.leftMargin: 12
        anchors.rightMargin: 12
        y: 10
        spacing: 8
    }
}
