import QtQuick
import Fadewell.Forms
import Fadewell.Settings
import Fadewell.Style

// The tabs, and the pane that they lead to.
FocusScope {
    id: root

    required property SettingsModel settings
    readonly property FormPage page: pane.item as FormPage

    LayoutMirroring.enabled: Theme.isMirrored
    LayoutMirroring.childrenInherit: true

    implicitWidth: 500
    implicitHeight: tabs.implicitHeight + (page ? page.naturalHeight : 0)
    width: implicitWidth
    height: implicitHeight
    focus: true

    Shortcut {
        sequences: ["Escape", "Ctrl+W"]
        onActivated: root.Window.window.close()
    }

    Shortcut {
        sequence: "Ctrl+Tab"
        onActivated: tabs.move(1)
    }

    Shortcut {
        sequence: "Ctrl+Shift+Tab"
        onActivated: tabs.move(-1)
    }

    Rectangle {
        anchors.fill: parent
        color: Theme.window
    }

    PaneTabs {
        id: tabs

        width: parent.width
        settings: root.settings
    }

    Loader {
        id: pane

        anchors.top: tabs.bottom
        anchors.bottom: parent.bottom
        width: parent.width
        sourceComponent: root.settings.pane === "calls" ? calls
                         : root.settings.pane === "apps" ? apps
                         : root.settings.pane === "shortcuts" ? shortcuts : general
    }

    // Names of the file, in a component made within it.
    // qmllint disable unqualified
    Component {
        id: general

        GeneralPane {
            pane: root.settings.general
        }
    }

    Component {
        id: calls

        CallsPane {
            pane: root.settings.calls
        }
    }

    Component {
        id: apps

        AppsPane {
            pane: root.settings.apps
        }
    }

    Component {
        id: shortcuts

        ShortcutsPane {
            pane: root.settings.shortcuts
        }
    }
    // qmllint enable unqualified

    Connections {
        target: root.Window.window

        function onActiveFocusItemChanged() {
            const item = root.Window.activeFocusItem;
            for (let each = item; each !== null && each !== root; each = each.parent)
                if (each === root.page)
                    root.page.reveal(item);
        }
    }
}
