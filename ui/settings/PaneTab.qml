import QtQuick
import Fadewell.Style

// The way to one pane.
PressArea {
    id: root

    required property string pane
    required property string symbol
    property bool isCurrent: false
    readonly property color foreground: isCurrent ? Theme.accent : Theme.secondaryText

    help: ""
    activeFocusOnTab: isCurrent // The arrow keys lead to the others.
    implicitWidth: Math.max(84, label.implicitWidth + 20)
    implicitHeight: picture.height + label.implicitHeight + 15
    Accessible.role: Accessible.PageTab
    Accessible.selectable: true
    Accessible.selected: isCurrent
    Accessible.focused: activeFocus

    Rectangle {
        anchors.fill: parent
        radius: 8
        color: root.pressed ? Theme.pressed : Theme.hover
        visible: root.isCurrent || root.pressed || root.hovered
    }

    Symbol {
        id: picture

        anchors.horizontalCenter: parent.horizontalCenter
        y: 6
        size: Math.round(Theme.iconSize)
        name: root.symbol
        color: root.foreground
    }

    Text {
        id: label

        anchors.horizontalCenter: parent.horizontalCenter
        anchors.top: picture.bottom
        anchors.topMargin: 2
        text: root.name
        textFormat: Text.PlainText
        color: root.foreground
        font.pixelSize: Theme.captionSize
        font.weight: root.isCurrent ? Font.DemiBold : Font.Normal
        Accessible.ignored: true
    }
}
