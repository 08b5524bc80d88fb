import QtQuick
import Fadewell.Style

// The picture of a switch; the row around it is what one operates.
Rectangle {
    id: root

    required property bool isOn

    implicitWidth: 34
    implicitHeight: 20
    radius: height / 2
    color: isOn ? Theme.accent : Theme.track

    Behavior on color {
        enabled: !Theme.reduceMotion

        ColorAnimation {
            duration: Theme.motionDuration
        }
    }

    Rectangle {
        x: root.isOn !== root.LayoutMirroring.enabled ? root.width - width - 2 : 2
        y: 2
        width: root.height - 4
        height: width
        radius: width / 2
        color: Theme.knob
        border.color: Theme.knobBorder

        Behavior on x {
            enabled: !Theme.reduceMotion

            NumberAnimation {
                duration: Theme.motionDuration
                easing.type: Easing.OutCubic
            }
        }
    }
}
