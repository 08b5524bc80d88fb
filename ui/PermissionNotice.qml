import QtQuick
import Fadewell.Panel
import Fadewell.Style

// Why no app's volume changes, and the way to allow it.
Item {
    id: root

    required property PanelModel panel

    implicitHeight: content.implicitHeight + 14

    Column {
        id: content

        x: 14
        y: 4
        width: parent.width - 28
        spacing: 8

        Text {
            width: parent.width
            text: qsTr("To change the volume of apps, allow Fadewell to record system audio.")
            textFormat: Text.PlainText
            wrapMode: Text.Wrap
            horizontalAlignment: Text.AlignLeft
            color: Theme.secondaryText
            font.pixelSize: Theme.subheadlineSize
            Accessible.role: Accessible.StaticText
            Accessible.name: text
            Accessible.ignored: !visible
        }

        PushButton {
            anchors.left: parent.left
            visible: root.panel.canOpenPermissionSettings
            name: root.panel.permissionSettingsTitle
            onClicked: root.panel.openPermissionSettings()
        }
    }
}
