import QtQuick
import Fadewell.Style

// Something goes on whose end isn't known.
Item {
    id: root

    required property string name

    implicitWidth: 18
    implicitHeight: 18
    Accessible.role: Accessible.Animation
    Accessible.name: name
    Accessible.ignored: !visible

    Item {
        id: wheel

        anchors.fill: parent

        Repeater {
            model: 8

            // Names of the file, in a component made within it.
            // qmllint disable unqualified
            Rectangle {
                id: spoke

                required property int index

                x: wheel.width / 2 - width / 2
                y: 1
                width: 2.4
                height: 5
                radius: width / 2
                color: Theme.secondaryText
                opacity: 0.25 + 0.75 * spoke.index / 7
                antialiasing: true
                transform: Rotation {
                    origin.x: 1.2
                    origin.y: wheel.height / 2 - 1
                    angle: spoke.index * 45
                }
            }
            // qmllint enable unqualified
        }

        RotationAnimator on rotation {
            running: root.visible && !Theme.reduceMotion
            from: 0
            to: 360
            duration: 1000
            loops: Animation.Infinite
        }
    }
}
