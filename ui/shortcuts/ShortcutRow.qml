import QtQuick
import Fadewell.Forms
import Fadewell.Recorder
import Fadewell.Style

// What a shortcut does, its field, and the question that a combination may raise.
FormRow {
    id: root

    required property RecorderField field

    Item {
        width: parent.width
        implicitHeight: Math.max(label.implicitHeight, recorder.implicitHeight)

        Text {
            id: label

            anchors.left: parent.left
            anchors.right: recorder.left
            anchors.rightMargin: 12
            anchors.verticalCenter: parent.verticalCenter
            text: root.field.title
            textFormat: Text.PlainText
            wrapMode: Text.Wrap
            horizontalAlignment: Text.AlignLeft
            color: Theme.text
            font.pixelSize: Theme.bodySize
            Accessible.ignored: true
        }

        ShortcutField {
            id: recorder

            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            field: root.field
        }
    }

    AlertSheet {
        title: root.field.alertMessage
        message: root.field.alertText
        buttons: root.field.alertButtons
        visible: root.field.isAsking
        onAnswered: answer => root.field.answer(answer)
    }
}
