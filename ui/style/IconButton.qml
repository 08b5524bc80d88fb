import QtQuick
import Fadewell.Style

// A borderless button that is only a symbol.
PressArea {
    id: root

    required property string symbol
    property color color: Theme.text
    property real symbolSize: Math.round(Theme.iconSize * 0.75)
    property alias waves: picture.waves

    implicitWidth: Theme.iconSize
    implicitHeight: Theme.iconSize
    opacity: enabled ? 1 : 0.4

    Rectangle {
        anchors.fill: parent
        radius: 6
        color: root.pressed ? Theme.pressed : Theme.hover
        visible: root.enabled && (root.pressed || root.hovered)
    }

    Symbol {
        id: picture

        anchors.centerIn: parent
        name: root.symbol
        size: root.symbolSize
        color: root.color
    }
}
