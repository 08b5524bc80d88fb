import QtQuick
import Fadewell.Panel
import Fadewell.Style

// One row for each app; scrolls when they don't fit. The keyboard goes through the rows in order,
// also through those that aren't made yet.
ListView {
    id: root

    required property PanelModel panel
    readonly property bool animates: panel.isActive && !Theme.reduceMotion

    required property Item before // what the keyboard reaches before and after the rows
    required property Item after

    // Goes to the first row from `row` on that can be operated, else past the rows.
    function enter(row: int, forward: bool): void {
        for (; row >= 0 && row < count; row += forward ? 1 : -1) {
            positionViewAtIndex(row, ListView.Contain);
            if ((itemAtIndex(row) as AppRow).takeFocus(forward))
                return;
        }
        (forward ? after : before).forceActiveFocus();
    }

    implicitHeight: Math.min(contentHeight + topMargin + bottomMargin, 480)
    height: implicitHeight
    topMargin: 4
    bottomMargin: 4
    clip: true
    interactive: contentHeight + topMargin + bottomMargin > height
    boundsBehavior: interactive ? Flickable.DragAndOvershootBounds : Flickable.StopAtBounds
    cacheBuffer: 200
    activeFocusOnTab: false
    model: panel.apps
    Accessible.role: Accessible.List
    Accessible.name: qsTr("Apps")

    // Names of the file, in a component made within it.
    // qmllint disable unqualified
    delegate: AppRow {
        width: ListView.view.width
        onVolumeChosen: volume => root.panel.setVolume(appID, volume)
        onMuteChosen: isMuted => root.panel.setMuted(appID, isMuted)
        onOutputMenuRequested: button => {
            root.panel.prepareOutputMenu(appID);
            outputs.openAt(button);
        }
        onTabbedOut: forward => root.enter(index + (forward ? 1 : -1), forward)
        percentWidth: widestPercent.advanceWidth
    }
    // qmllint enable unqualified

    add: Transition {
        enabled: root.animates

        NumberAnimation {
            property: "opacity"
            from: 0
            to: 1
            duration: Theme.motionDuration
        }
    }

    displaced: Transition {
        enabled: root.animates

        NumberAnimation {
            properties: "y"
            duration: Theme.motionDuration
            easing.type: Easing.OutCubic
        }
        NumberAnimation {
            property: "opacity"
            to: 1
            duration: Theme.motionDuration
        }
    }

    ScrollIndicator {
        list: root
    }

    TextMetrics {
        id: widestPercent

        text: root.panel.fullPercent
        font.pixelSize: Theme.subheadlineSize
    }

    PopupMenu {
        id: outputs

        entries: root.panel.outputMenu
        name: qsTr("Output")
    }
}
