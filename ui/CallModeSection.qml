import QtQuick
import Fadewell.Panel
import Fadewell.Style

Item {
    id: root

    required property PanelModel panel
    readonly property alias control: row

    signal tabbedBack

    implicitHeight: row.implicitHeight + 16

    SwitchRow {
        id: row

        x: 14
        y: 8
        width: parent.width - 28
        height: implicitHeight
        title: qsTr("Call Mode")
        caption: root.panel.callModeCaption
        isOn: root.panel.isCallModeActive
        onSwitched: isOn => root.panel.setCallModeActive(isOn)
        Keys.onBacktabPressed: root.tabbedBack()
    }
}
