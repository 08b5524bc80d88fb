import QtQuick
import Fadewell.Diagnostics
import Fadewell.Forms
import Fadewell.Style

// A text to read before it is passed on.
Rectangle {
    id: root

    required property DiagnosticsModel diagnostics

    LayoutMirroring.enabled: Theme.isMirrored
    LayoutMirroring.childrenInherit: true

    width: 720
    height: 560
    color: Theme.window
    focus: true
    Accessible.role: Accessible.Dialog
    Accessible.name: qsTr("Diagnostics")

    Shortcut {
        sequences: ["Escape", "Ctrl+W"]
        onActivated: root.Window.window.close()
    }

    Column {
        id: head

        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: parent.top
        anchors.margins: 20
        spacing: 12

        FormNote {
            width: parent.width
            font.pixelSize: Theme.subheadlineSize
            text: qsTr("This helps to find a fault. Nothing of it is sent anywhere: read it, then copy or save it for whoever helps you.")
        }

        SwitchRow {
            width: parent.width
            title: qsTr("Leave Out the Names of Apps")
            caption: qsTr("Apps are called “app 1”, “app 2” and so on.")
            isOn: root.diagnostics.leavesOutNames
            onSwitched: isOn => root.diagnostics.leavesOutNames = isOn
        }
    }

    Rectangle {
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: head.bottom
        anchors.bottom: foot.top
        anchors.margins: 20
        anchors.topMargin: 14
        anchors.bottomMargin: 14
        radius: 8
        color: Theme.raised
        border.color: body.activeFocus ? Theme.accent : Theme.border

        Flickable {
            id: page

            // The margin of the text belongs to its first and last characters.
            function reveal(area: rect): void {
                if (width <= 0 || height <= 0)
                    return;
                const margin = body.padding;
                contentX = Math.max(area.x + area.width + margin - width, Math.min(contentX, area.x - margin));
                contentY = Math.max(area.y + area.height + margin - height, Math.min(contentY, area.y - margin));
            }

            anchors.fill: parent
            anchors.margins: 1
            contentWidth: Math.max(width, body.implicitWidth)
            contentHeight: Math.max(height, body.implicitHeight)
            interactive: contentHeight > height || contentWidth > width
            boundsBehavior: Flickable.StopAtBounds
            clip: true

            // The text is English and laid out in columns: neither mirrored nor wrapped.
            TextEdit {
                id: body

                LayoutMirroring.enabled: false
                width: page.contentWidth
                padding: 12
                text: root.diagnostics.text
                textFormat: TextEdit.PlainText
                horizontalAlignment: TextEdit.AlignLeft
                readOnly: true
                selectByMouse: true
                selectByKeyboard: true
                activeFocusOnTab: true
                focus: true
                color: Theme.text
                selectionColor: Theme.accent
                selectedTextColor: Theme.onAccent
                font.family: "monospace"
                font.pixelSize: Theme.captionSize
                onCursorRectangleChanged: page.reveal(cursorRectangle)
                Accessible.role: Accessible.EditableText
                Accessible.name: qsTr("Diagnostics")
                Accessible.readOnly: true
                Accessible.multiLine: true

                // A tab leaves the text.
                KeyNavigation.priority: KeyNavigation.BeforeItem
                KeyNavigation.tab: copyButton
            }

            ScrollIndicator {
                list: page
            }
        }
    }

    Item {
        id: foot

        anchors.left: parent.left
        anchors.right: parent.right
        anchors.bottom: parent.bottom
        anchors.margins: 20
        height: copyButton.implicitHeight

        FormNote {
            anchors.left: parent.left
            anchors.right: buttons.left
            anchors.rightMargin: 12
            anchors.verticalCenter: parent.verticalCenter
            wrapMode: Text.NoWrap
            elide: Text.ElideMiddle
            text: root.diagnostics.status
        }

        Row {
            id: buttons

            anchors.right: parent.right
            spacing: 8

            PushButton {
                id: copyButton

                name: qsTr("Copy")
                enabled: !root.diagnostics.isGathering
                onClicked: root.diagnostics.copy()
            }

            PushButton {
                name: qsTr("Save…")
                enabled: !root.diagnostics.isGathering
                onClicked: root.diagnostics.save()
            }
        }
    }
}
