import QtQuick
import Fadewell.Panel
import Fadewell.Style

// The title and the menu at its end.
Item {
    id: root

    required property PanelModel panel
    readonly property alias button: more

    signal tabbedForward

    implicitHeight: Math.max(title.implicitHeight, more.implicitHeight) + 14

    Text {
        id: title

        anchors.left: parent.left
        anchors.leftMargin: 14
        anchors.verticalCenter: more.verticalCenter
        text: "Fadewell"
        color: Theme.text
        font.pixelSize: Theme.bodySize
        font.weight: Font.DemiBold
        Accessible.role: Accessible.Heading
        Accessible.name: text
    }

    MoreMenu {
        id: more

        objectName: "more"

        anchors.right: parent.right
        anchors.rightMargin: 14
        anchors.top: parent.top
        anchors.topMargin: 10
        panel: root.panel
        Keys.onTabPressed: root.tabbedForward()
    }
}
