import QtQuick
import Fadewell.Style

// The slider says the same, so that assistive technology passes it over.
Text {
    textFormat: Text.PlainText
    horizontalAlignment: Text.AlignRight
    color: Theme.secondaryText
    font.pixelSize: Theme.subheadlineSize
    Accessible.ignored: true
}
