import QtQuick
import Fadewell.Style

// What to do where no page of the system's settings does it.
Rectangle {
    id: root

    required property string title
    required property var paragraphs

    LayoutMirroring.enabled: Theme.isMirrored
    LayoutMirroring.childrenInherit: true

    width: 460
    implicitHeight: column.implicitHeight + 48
    height: implicitHeight
    color: Theme.window
    focus: true
    Accessible.role: Accessible.Dialog
    Accessible.name: title

    Shortcut {
        sequences: ["Escape", "Ctrl+W"]
        onActivated: root.Window.window.close()
    }

    Column {
        id: column

        x: 24
        y: 24
        width: parent.width - 48
        spacing: 12

        Text {
            width: parent.width
            text: root.title
            textFormat: Text.PlainText
            wrapMode: Text.Wrap
            horizontalAlignment: Text.AlignLeft
            color: Theme.text
            font.pixelSize: Theme.bodySize * 1.3
            font.weight: Font.DemiBold
            Accessible.role: Accessible.Heading
            Accessible.name: text
        }

        Repeater {
            model: root.paragraphs

            // Names of the file, in a component made within it.
            // qmllint disable unqualified
            TextEdit {
                required property string modelData

                width: column.width
                text: modelData
                textFormat: TextEdit.PlainText
                wrapMode: TextEdit.Wrap
                horizontalAlignment: TextEdit.AlignLeft
                readOnly: true
                selectByMouse: true // People copy commands from here.
                color: Theme.text
                selectionColor: Theme.accent
                selectedTextColor: Theme.onAccent
                font.pixelSize: Theme.bodySize
                activeFocusOnTab: true
                Accessible.role: Accessible.StaticText
                Accessible.name: text
            }
            // qmllint enable unqualified
        }

        PushButton {
            anchors.right: parent.right
            name: qsTr("Done")
            isDefault: true
            focus: true
            onClicked: root.Window.window.close()
        }
    }
}
