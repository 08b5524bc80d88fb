import QtQuick
import Fadewell.Style

// Drawn around what has the keyboard.
Rectangle {
    id: root

    required property Item target
    property real gap: 2

    anchors.fill: target
    anchors.margins: -gap
    radius: 6
    color: "transparent"
    border.width: 2
    border.color: Theme.accent
    visible: target.activeFocus
}
