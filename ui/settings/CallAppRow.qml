import QtQuick
import Fadewell.Forms
import Fadewell.Style

// An app whose calls may count.
FormRow {
    id: root

    required property string bundleID
    required property string name
    required property string icon
    required property bool isOn

    signal switched(bool isOn)

    dividerInset: 42

    SwitchRow {
        width: parent.width
        leadingSpace: 30
        title: root.name
        caption: ""
        isOn: root.isOn
        onSwitched: isOn => root.switched(isOn)

        Image {
            anchors.left: parent.left
            anchors.verticalCenter: parent.verticalCenter
            width: 20
            height: 20
            sourceSize.width: 20 * Screen.devicePixelRatio
            sourceSize.height: 20 * Screen.devicePixelRatio
            fillMode: Image.PreserveAspectFit
            source: root.icon
        }
    }
}
