import QtQuick
import Fadewell.Style

// An explanation in small print.
Text {
    textFormat: Text.PlainText
    wrapMode: Text.Wrap
    horizontalAlignment: Text.AlignLeft
    color: Theme.secondaryText
    font.pixelSize: Theme.captionSize
    Accessible.role: Accessible.StaticText
    Accessible.name: text
    Accessible.ignored: text === "" || !visible
}
