import QtQuick
import Fadewell.Style

// One entry of a menu, and the divider below it.
Item {
    id: root

    required property int index
    required property string title
    required property string symbol
    required property string shortcut
    required property bool isCheckable
    required property bool isChecked
    required property bool hasDividerBelow
    property bool isCurrent: false
    readonly property real naturalWidth: row.implicitWidth + 16
                                        + (shortcut === "" ? 0 : keys.implicitWidth + 24)
    readonly property color foreground: isCurrent ? Theme.onAccent : Theme.text

    signal entered
    signal chosen

    implicitHeight: face.height + (hasDividerBelow ? 9 : 0)
    Accessible.role: isCheckable ? Accessible.RadioButton : Accessible.MenuItem
    Accessible.name: title
    Accessible.checkable: isCheckable
    Accessible.checked: isChecked
    Accessible.focusable: true
    Accessible.focused: isCurrent
    Accessible.onPressAction: root.chosen()
    Accessible.onToggleAction: root.chosen()

    Rectangle {
        id: face

        width: parent.width
        height: label.implicitHeight + 10
        radius: 5
        color: root.isCurrent ? Theme.accent : "transparent"

        HoverHandler {
            onHoveredChanged: if (hovered) root.entered()
        }

        TapHandler {
            gesturePolicy: TapHandler.ReleaseWithinBounds
            onTapped: root.chosen()
        }
    }

    Row {
        id: row

        anchors.verticalCenter: face.verticalCenter
        anchors.left: face.left
        anchors.leftMargin: 8
        spacing: 7

        Symbol {
            anchors.verticalCenter: parent.verticalCenter
            visible: root.isCheckable
            size: 14
            name: root.isChecked ? "checkmark" : ""
            color: root.foreground
        }

        Symbol {
            anchors.verticalCenter: parent.verticalCenter
            visible: root.symbol !== ""
            size: 17
            name: root.symbol
            color: root.foreground
        }

        Text {
            id: label

            anchors.verticalCenter: parent.verticalCenter
            width: Math.min(implicitWidth, 210)
            text: root.title
            textFormat: Text.PlainText
            elide: Text.ElideRight
            maximumLineCount: 1
            color: root.foreground
            font.pixelSize: Theme.bodySize
            Accessible.ignored: true
        }
    }

    Text {
        id: keys

        anchors.verticalCenter: face.verticalCenter
        anchors.right: face.right
        anchors.rightMargin: 8
        text: root.shortcut
        textFormat: Text.PlainText
        color: root.foreground
        opacity: 0.6
        font.pixelSize: Theme.subheadlineSize
        Accessible.ignored: true
    }

    Divider {
        visible: root.hasDividerBelow
        anchors.bottom: parent.bottom
        anchors.bottomMargin: 4
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.leftMargin: 6
        anchors.rightMargin: 6
    }
}
