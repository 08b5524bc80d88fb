import QtQuick
import Fadewell.Panel
import Fadewell.Style

// Everything that drops from the tray icon.
FocusScope {
    id: root

    required property PanelModel panel
    property bool hasRoundCorners: false
    readonly property real inset: 14

    LayoutMirroring.enabled: Theme.isMirrored
    LayoutMirroring.childrenInherit: true

    width: 320
    implicitHeight: content.implicitHeight
    focus: true
    Accessible.role: Accessible.Pane
    Accessible.name: "Fadewell"

    Keys.onEscapePressed: panel.closeRequested()

    Shortcut {
        sequence: "Ctrl+,"
        enabled: root.panel.canOpenSettings
        onActivated: root.panel.openSettings()
    }

    Shortcut {
        sequence: "Ctrl+Q"
        enabled: root.panel.canQuit
        onActivated: root.panel.quit()
    }

    Rectangle {
        anchors.fill: parent
        color: Theme.window
        border.color: Theme.border
        radius: root.hasRoundCorners ? 12 : 0
    }

    Column {
        id: content

        width: parent.width

        PanelHeader {
            id: header

            width: parent.width
            panel: root.panel
            onTabbedForward: rows.enter(0, true)
        }

        PermissionNotice {
            width: parent.width
            visible: root.panel.needsAudioPermission
            panel: root.panel
        }

        Divider {
            x: root.inset
            width: parent.width - 2 * root.inset
        }

        AppList {
            id: rows

            width: parent.width
            visible: count > 0
            panel: root.panel
            before: header.button
            after: callMode.control
        }

        NoAppsView {
            width: parent.width
            visible: rows.count === 0
        }

        Divider {
            x: root.inset
            width: parent.width - 2 * root.inset
        }

        CallModeSection {
            id: callMode

            width: parent.width
            panel: root.panel
            onTabbedBack: rows.enter(rows.count - 1, false)
        }

        MicrophoneSection {
            width: parent.width
            panel: root.panel
        }
    }
}
