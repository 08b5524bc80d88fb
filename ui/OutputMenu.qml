import QtQuick
import Fadewell.Style

// Where the app plays; tinted when it was sent there.
IconButton {
    id: root

    required property string deviceName
    required property bool isRouted
    property color routedTint: Theme.accent

    name: qsTr("Output")
    help: deviceName === "" ? name : qsTr("Output: %1").arg(deviceName)
    color: isRouted ? routedTint : Theme.secondaryText
    Accessible.description: deviceName
}
