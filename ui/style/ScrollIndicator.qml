import QtQuick
import Fadewell.Style

// Shows how far a list has been scrolled, where it can be.
Rectangle {
    id: root

    required property Flickable list
    readonly property real share: list.visibleArea.heightRatio

    parent: list
    visible: list.interactive
    x: LayoutMirroring.enabled ? 2 : list.width - width - 2
    y: list.visibleArea.yPosition * list.height + 2
    width: 4
    height: Math.max(24, share * list.height) - 4
    radius: 2
    color: Theme.secondaryText
    opacity: list.moving || list.visibleArea.yPosition === 0 ? 0.5 : 0.35
}
