import QtQuick
import Fadewell.Settings
import Fadewell.Style

// The four panes, side by side.
Item {
    id: root

    required property SettingsModel settings
    readonly property var tabs: [general, calls, apps, shortcuts]

    function move(step: int): void {
        const current = tabs.findIndex(tab => tab.isCurrent);
        const next = tabs[Math.max(0, Math.min(tabs.length - 1, current + step))];
        settings.pane = next.pane;
        next.forceActiveFocus(Qt.TabFocusReason);
    }

    implicitHeight: row.implicitHeight + 17
    Accessible.role: Accessible.PageTabList
    Accessible.name: qsTr("Panes")

    Keys.onLeftPressed: move(LayoutMirroring.enabled ? 1 : -1)
    Keys.onRightPressed: move(LayoutMirroring.enabled ? -1 : 1)

    Row {
        id: row

        anchors.horizontalCenter: parent.horizontalCenter
        y: 8
        spacing: 6

        PaneTab {
            id: general

            pane: "general"
            name: qsTr("General")
            symbol: "gearshape"
            isCurrent: root.settings.pane === pane
            onClicked: root.settings.pane = pane
        }

        PaneTab {
            id: calls

            pane: "calls"
            name: qsTr("Calls")
            symbol: "phone"
            isCurrent: root.settings.pane === pane
            onClicked: root.settings.pane = pane
        }

        PaneTab {
            id: apps

            pane: "apps"
            name: qsTr("Apps")
            symbol: "square.grid.2x2"
            isCurrent: root.settings.pane === pane
            onClicked: root.settings.pane = pane
        }

        PaneTab {
            id: shortcuts

            pane: "shortcuts"
            name: qsTr("Shortcuts")
            symbol: "keyboard"
            isCurrent: root.settings.pane === pane
            onClicked: root.settings.pane = pane
        }
    }

    Divider {
        anchors.bottom: parent.bottom
        width: parent.width
    }
}
