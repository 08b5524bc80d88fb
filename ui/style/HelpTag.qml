import QtQuick
import QtQuick.Templates as T
import Fadewell.Style

// What a control is, shown when the pointer rests on it.
T.ToolTip {
    id: root

    required property bool shown

    visible: shown && text !== ""
    delay: 700
    x: parent ? (parent.width - implicitWidth) / 2 : 0
    y: parent ? parent.height + 4 : 0
    margins: 4
    padding: 6
    implicitWidth: Math.min(contentItem.implicitWidth + 12, 280)
    implicitHeight: contentItem.implicitHeight + 10
    closePolicy: T.Popup.NoAutoClose

    contentItem: Text {
        text: root.text
        textFormat: Text.PlainText
        elide: Text.ElideRight
        color: Theme.text
        font.pixelSize: Theme.captionSize
        Accessible.ignored: true
    }

    background: Rectangle {
        color: Theme.raised
        border.color: Theme.border
        radius: 5
    }
}
