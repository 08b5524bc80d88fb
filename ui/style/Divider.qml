import QtQuick
import Fadewell.Style

Rectangle {
    implicitHeight: 1
    color: Theme.divider
}
