import QtQuick
import QtQuick.Templates as T
import Fadewell.Style

// A question over its window. Escape gives the answer of `escapeAnswer`.
T.Popup {
    id: root

    property string title
    property string message
    property var buttons: []       // the first one is at the end of the line
    property int defaultButton: 0
    property int destructiveButton: -1
    property int escapeAnswer: 0
    property int answer: escapeAnswer
    property Item before // what had the keyboard

    signal answered(int answer)

    parent: T.Overlay.overlay
    x: parent ? Math.round((parent.width - width) / 2) : 0
    y: parent ? Math.round((parent.height - height) / 3) : 0
    width: Math.min(360, parent ? parent.width - 40 : 360)
    height: implicitHeight
    implicitHeight: contentItem.implicitHeight + 2 * padding
    padding: 20
    modal: true
    focus: true
    closePolicy: T.Popup.CloseOnEscape

    onAboutToShow: {
        answer = escapeAnswer;
        before = parent.Window.activeFocusItem;
    }
    onOpened: row.focusDefault()
    onClosed: {
        if (before !== null)
            before.forceActiveFocus(Qt.PopupFocusReason);
        answered(answer);
    }

    T.Overlay.modal: Rectangle {
        color: Qt.rgba(0, 0, 0, Theme.isDark ? 0.5 : 0.3)
    }

    background: Rectangle {
        color: Theme.window
        border.color: Theme.border
        radius: 12
    }

    // Made at once and not when it is first needed: other properties refer to what is in it.
    // qmllint disable deferred-property-id
    contentItem: Column {
        spacing: 10
        Accessible.role: Accessible.AlertMessage
        Accessible.name: root.title
        Accessible.description: root.message

        LayoutMirroring.enabled: Theme.isMirrored
        LayoutMirroring.childrenInherit: true

        Text {
            width: parent.width
            text: root.title
            textFormat: Text.PlainText
            wrapMode: Text.Wrap
            horizontalAlignment: Text.AlignLeft
            color: Theme.text
            font.pixelSize: Theme.bodySize * 1.1
            font.weight: Font.DemiBold
            Accessible.ignored: true
        }

        Text {
            width: parent.width
            visible: text !== ""
            text: root.message
            textFormat: Text.PlainText
            wrapMode: Text.Wrap
            horizontalAlignment: Text.AlignLeft
            color: Theme.secondaryText
            font.pixelSize: Theme.subheadlineSize
            Accessible.ignored: true
        }

        Row {
            id: row

            function focusDefault(): void {
                const button = repeater.itemAt(root.defaultButton);
                if (button)
                    button.forceActiveFocus(Qt.TabFocusReason);
            }

            anchors.right: parent.right
            topPadding: 8
            spacing: 8
            layoutDirection: Qt.RightToLeft // The first button comes last.

            Repeater {
                id: repeater

                model: root.buttons

                // Names of the file, in a component made within it.
                // qmllint disable unqualified
                PushButton {
                    required property int index
                    required property string modelData

                    name: modelData
                    isDefault: index === root.defaultButton
                    isDestructive: index === root.destructiveButton
                    onClicked: {
                        root.answer = index;
                        root.close();
                    }
                }
                // qmllint enable unqualified
            }
        }
    }
}
