import QtQuick
import Fadewell.Style

// A row with a switch; `content` comes below it.
FormRow {
    id: root

    required property string title
    required property bool isOn
    property string caption

    signal switched(bool isOn)

    SwitchRow {
        width: parent.width
        title: root.title
        caption: root.caption
        isOn: root.isOn
        onSwitched: isOn => root.switched(isOn)
    }
}
