import QtQuick
import Fadewell.Style

// A bundled symbol in one colour. Says nothing to assistive technology.
Image {
    id: root

    required property string name
    property color color: Theme.text
    property real size: 18
    property int waves: 3 // how many are lit, where the symbol has waves

    function hex(part: real): string {
        return Math.round(part * 255).toString(16).padStart(2, "0");
    }

    width: size
    height: size
    sourceSize.width: size * Screen.devicePixelRatio
    sourceSize.height: size * Screen.devicePixelRatio
    source: name === "" ? "" : "image://symbol/" + name + "/" + waves + "/"
                               + hex(color.r) + hex(color.g) + hex(color.b) + hex(color.a)
}
