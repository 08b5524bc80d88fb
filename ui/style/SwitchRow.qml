import QtQuick
import Fadewell.Style

// A title, a caption and a switch: one element for assistive technology, one click for everybody.
Item {
    id: root

    required property string title
    required property string caption
    required property bool isOn
    property real leadingSpace: 0 // for a picture

    signal switched(bool isOn)

    implicitHeight: Math.max(texts.implicitHeight, toggle.implicitHeight)
    activeFocusOnTab: true
    Accessible.role: Accessible.CheckBox
    Accessible.name: title
    Accessible.description: caption
    Accessible.checkable: true
    Accessible.checked: isOn
    Accessible.focusable: true
    Accessible.ignored: !visible
    Accessible.onPressAction: root.switched(!root.isOn)
    Accessible.onToggleAction: root.switched(!root.isOn)

    Keys.onSpacePressed: root.switched(!root.isOn)
    Keys.onReturnPressed: root.switched(!root.isOn)
    Keys.onEnterPressed: root.switched(!root.isOn)

    TapHandler {
        gesturePolicy: TapHandler.ReleaseWithinBounds
        onTapped: root.switched(!root.isOn)
    }

    Column {
        id: texts

        anchors.left: parent.left
        anchors.leftMargin: root.leadingSpace
        anchors.right: toggle.left
        anchors.rightMargin: 8
        anchors.verticalCenter: parent.verticalCenter
        spacing: 1

        Text {
            width: parent.width
            text: root.title
            textFormat: Text.PlainText
            elide: Text.ElideRight
            horizontalAlignment: Text.AlignLeft
            color: Theme.text
            font.pixelSize: Theme.bodySize
            Accessible.ignored: true
        }

        Text {
            width: parent.width
            visible: text !== ""
            text: root.caption
            textFormat: Text.PlainText
            wrapMode: Text.Wrap
            elide: Text.ElideRight
            maximumLineCount: 3
            horizontalAlignment: Text.AlignLeft
            color: Theme.secondaryText
            font.pixelSize: Theme.captionSize
            Accessible.ignored: true
        }
    }

    SmallSwitch {
        id: toggle

        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        opacity: root.enabled ? 1 : 0.45
        isOn: root.isOn
    }

    FocusRing {
        target: root
        gap: 4
    }
}
