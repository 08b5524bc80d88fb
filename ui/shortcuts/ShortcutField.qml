import QtQuick
import Fadewell.Recorder
import Fadewell.Style

// Records the next combination while it has the keyboard.
Item {
    id: root

    required property RecorderField field
    // Symbols stand in their order, also where the key's name is written from right to left.
    readonly property string symbols: "\u200E" + field.text
    readonly property bool hasKeyboard: face.activeFocus && Window.active

    implicitWidth: Math.round(150 * Theme.bodySize / 13.5)
    implicitHeight: label.implicitHeight + 12

    onHasKeyboardChanged: hasKeyboard ? field.begin() : field.end()

    Connections {
        target: root.field

        function onKeyboardDropped() {
            face.focus = false;
        }
    }

    Rectangle {
        id: face

        anchors.fill: parent
        radius: 6
        color: Theme.window
        border.color: Theme.border
        activeFocusOnTab: true
        Accessible.role: Accessible.EditableText
        Accessible.name: root.field.title
        Accessible.description: root.field.isRecording ? qsTr("Press the shortcut, or Escape to cancel")
                                : root.field.spokenText !== "" ? root.field.spokenText : qsTr("None")
        Accessible.focusable: true
        Accessible.onPressAction: face.forceActiveFocus()

        TapHandler {
            gesturePolicy: TapHandler.ReleaseWithinBounds
            onTapped: face.forceActiveFocus(Qt.MouseFocusReason)
        }

        HoverHandler {
            id: hover
        }

        HelpTag {
            text: root.field.spokenText
            shown: hover.hovered && !root.field.isRecording
        }

        Text {
            id: label

            anchors.left: parent.left
            anchors.right: parent.right
            anchors.margins: clear.visible ? clear.width + 6 : 8 // in the middle all the same
            anchors.verticalCenter: parent.verticalCenter
            horizontalAlignment: Text.AlignHCenter
            text: root.field.isRecording ? qsTr("Press Shortcut")
                  : root.field.text !== "" ? root.symbols : qsTr("Record Shortcut")
            textFormat: Text.PlainText
            elide: Text.ElideRight
            color: root.field.text !== "" && !root.field.isRecording ? Theme.text : Theme.secondaryText
            font.pixelSize: Theme.subheadlineSize
            Accessible.ignored: true
        }
    }

    FocusRing {
        target: face
        gap: 1
    }

    IconButton {
        id: clear

        anchors.right: parent.right
        anchors.rightMargin: 4
        anchors.verticalCenter: parent.verticalCenter
        visible: root.field.showsCancelButton
        symbol: "xmark.circle.fill"
        symbolSize: 14
        implicitWidth: 20
        implicitHeight: 20
        color: Theme.secondaryText
        name: qsTr("Clear %1").arg(root.field.title)
        help: qsTr("Clear")
        onClicked: root.field.clear()
    }
}
