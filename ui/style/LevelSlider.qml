import QtQuick
import QtQuick.Templates as T
import Fadewell.Style

// Shows `level`, from 0 to 1, and asks for another one by `levelChosen`, also when assistive
// technology moves it, which the toolkit does without `moved`. Within, it counts in per cent: the
// value is passed on as a bare number, and a screen reader rounds 0.45 in steps of 0.05 to 0.5.
T.Slider {
    id: root

    required property real level
    required property string name
    readonly property real minimumValue: from // what assistive technology is told
    readonly property real maximumValue: to
    readonly property real percent: level * 100
    readonly property real knobSize: 16

    signal levelChosen(real level)

    from: 0
    to: 100
    stepSize: 5
    focusPolicy: Qt.TabFocus
    implicitWidth: 120
    implicitHeight: Math.max(22, Theme.iconSize)
    opacity: enabled ? 1 : 0.45
    Accessible.name: name
    Accessible.ignored: !visible

    onPercentChanged: if (!pressed) value = percent
    onPressedChanged: if (!pressed) value = percent
    onValueChanged: if (value !== percent) levelChosen(value / 100)
    Component.onCompleted: value = percent

    background: Rectangle {
        x: root.knobSize / 2
        y: (root.height - height) / 2
        width: root.width - root.knobSize
        height: 4
        radius: 2
        color: Theme.track

        Rectangle {
            x: root.mirrored ? parent.width - width : 0
            width: parent.width * root.position
            height: parent.height
            radius: 2
            color: Theme.accent
        }
    }

    handle: Rectangle {
        x: root.visualPosition * (root.width - width)
        y: (root.height - height) / 2
        width: root.knobSize
        height: root.knobSize
        radius: width / 2
        color: root.pressed ? Qt.darker(Theme.knob, 1.08) : Theme.knob
        border.color: Theme.knobBorder
    }

    FocusRing {
        target: root
        gap: 0
    }
}
