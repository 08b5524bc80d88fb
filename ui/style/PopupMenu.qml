import QtQuick
import QtQuick.Templates as T
import Fadewell.Style

// A menu inside its window: scrolls where it is higher than that, and works by keyboard alone.
T.Popup {
    id: root

    required property MenuModel entries
    required property string name
    property Item button // what it belongs to
    property Item previousFocus // what has the keyboard again afterwards

    function openAt(item: Item): void {
        if (count === 0)
            return;
        button = item;
        parent = item;
        previousFocus = item.Window.activeFocusItem;
        list.currentIndex = entries.checkedIndex;
        open();
        list.forceActiveFocus();
    }

    function choose(index: int): void {
        close();
        entries.choose(index);
    }

    readonly property int count: entries.count
    // A menu has the keys only while its window has them, and doesn't outlast that.
    readonly property bool isWindowActive: list.Window.active
    readonly property bool hasKeys: visible && isWindowActive
    readonly property bool isMirrored: button !== null && button.LayoutMirroring.enabled

    x: button === null ? 0 : isMirrored ? 0 : button.width - width
    y: button === null ? 0 : button.height + 2
    width: Math.min(list.widest + 12, 280)
    height: Math.min(list.contentHeight + 12, (T.Overlay.overlay ? T.Overlay.overlay.height : 480) - 16)
    margins: 8
    padding: 6
    focus: true
    closePolicy: T.Popup.CloseOnEscape | T.Popup.CloseOnPressOutside

    onHasKeysChanged: MenuTracking.setTracking(root, hasKeys)
    onIsWindowActiveChanged: if (!isWindowActive) close()
    onCountChanged: if (count === 0) close() // what it belongs to is gone
    onClosed: if (previousFocus !== null) previousFocus.forceActiveFocus()

    background: Rectangle {
        color: Theme.raised
        border.color: Theme.border
        radius: 8
    }

    // Made at once and not when it is first needed: other properties refer to what is in it.
    // qmllint disable deferred-property-id
    contentItem: ListView {
        id: list

        property real widest: 120

        LayoutMirroring.enabled: root.isMirrored // not inherited: a popup isn't below its button
        LayoutMirroring.childrenInherit: true

        model: root.entries
        clip: true
        boundsBehavior: Flickable.StopAtBounds
        highlightMoveDuration: 0
        currentIndex: -1
        keyNavigationEnabled: true
        Accessible.role: Accessible.PopupMenu
        Accessible.name: root.name

        Keys.onSpacePressed: root.choose(currentIndex)
        Keys.onReturnPressed: root.choose(currentIndex)
        Keys.onEnterPressed: root.choose(currentIndex)
        Keys.onTabPressed: root.close()
        Keys.onBacktabPressed: root.close()

        // Names of the file, in a component made within it.
        // qmllint disable unqualified
        delegate: MenuEntry {
            width: list.width
            isCurrent: ListView.isCurrentItem && list.activeFocus
            onNaturalWidthChanged: list.widest = Math.max(list.widest, naturalWidth)
            Component.onCompleted: list.widest = Math.max(list.widest, naturalWidth)
            onEntered: list.currentIndex = index
            onChosen: root.choose(index)
        }
        // qmllint enable unqualified
    }
}
