import QtQuick

// The rows of one box.
Column {
    anchors.left: parent.left
    anchors.right: parent.right
}
