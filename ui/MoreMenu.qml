import Fadewell.Panel
import Fadewell.Style

// What concerns the whole program. Absent when there is nothing to choose.
IconButton {
    id: root

    required property PanelModel panel

    visible: panel.moreMenu.count > 0
    name: qsTr("More")
    symbol: "ellipsis.circle"
    color: Theme.secondaryText
    onClicked: menu.openAt(root)

    PopupMenu {
        id: menu

        entries: root.panel.moreMenu
        name: root.name
    }
}
