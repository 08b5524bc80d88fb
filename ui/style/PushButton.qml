import QtQuick
import Fadewell.Style

// A button with a text.
PressArea {
    id: root

    property bool isDefault: false     // what the return key does in its window
    property bool isDestructive: false // loses something
    readonly property color foreground: isDefault ? Theme.onAccent : isDestructive ? Theme.destructive : Theme.text

    help: ""
    implicitWidth: label.implicitWidth + 24
    implicitHeight: label.implicitHeight + 10

    Rectangle {
        anchors.fill: parent
        radius: 6
        color: root.isDefault ? Theme.accent : Theme.raised
        border.color: root.isDefault ? "transparent" : Theme.border
    }

    Rectangle {
        anchors.fill: parent
        radius: 6
        color: root.pressed ? Theme.pressed : Theme.hover
        visible: root.pressed || root.hovered
    }

    Text {
        id: label

        anchors.centerIn: parent
        width: Math.min(implicitWidth, root.width - 16)
        text: root.name
        textFormat: Text.PlainText
        elide: Text.ElideRight
        color: root.foreground
        font.pixelSize: Theme.subheadlineSize
        Accessible.ignored: true
    }
}
