import QtQuick
import Fadewell.Style

// Sections below each other; scrolls where they are higher than the window, and to whatever the
// keyboard goes to.
Flickable {
    id: root

    default property alias sections: column.data
    readonly property real naturalHeight: column.implicitHeight + 2 * margin
    readonly property real margin: 20

    function reveal(item: Item): void {
        const top = item.mapToItem(column, 0, 0).y + margin;
        if (top < contentY + margin)
            contentY = Math.max(0, top - margin);
        else if (top + item.height > contentY + height - margin)
            contentY = Math.min(contentHeight - height, top + item.height - height + margin);
    }

    contentHeight: naturalHeight
    interactive: contentHeight > height
    boundsBehavior: Flickable.StopAtBounds
    clip: true

    Column {
        id: column

        x: root.margin
        y: root.margin
        width: root.width - 2 * root.margin
        spacing: 18
    }

    ScrollIndicator {
        list: root
    }
}
