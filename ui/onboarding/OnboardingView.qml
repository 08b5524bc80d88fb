import QtQuick
import Fadewell.Onboarding
import Fadewell.Style

// The icon, and one step after the other below it.
FocusScope {
    id: root

    required property OnboardingModel onboarding
    readonly property OnboardingStep current: step.item as OnboardingStep

    LayoutMirroring.enabled: Theme.isMirrored
    LayoutMirroring.childrenInherit: true

    implicitWidth: 480
    implicitHeight: stack.implicitHeight + 24 + 28
    width: implicitWidth
    height: implicitHeight
    focus: true
    Accessible.role: Accessible.Pane
    Accessible.name: qsTr("Welcome to Fadewell")

    // The return key does what the button of the step does, wherever the keyboard is.
    Keys.onReturnPressed: current.defaultButton.clicked()
    Keys.onEnterPressed: current.defaultButton.clicked()

    Component.onCompleted: onboarding.appear()

    Shortcut {
        sequences: ["Escape", "Ctrl+W"]
        onActivated: root.Window.window.close()
    }

    Rectangle {
        anchors.fill: parent
        color: Theme.window
    }

    Column {
        id: stack

        x: 40
        y: 24
        width: parent.width - 80
        spacing: 20

        Image {
            id: icon

            anchors.horizontalCenter: parent.horizontalCenter
            width: 80
            height: 80
            sourceSize.width: 80 * Screen.devicePixelRatio
            sourceSize.height: 80 * Screen.devicePixelRatio
            source: "qrc:/fadewell/onboarding/icon.svg"
            Accessible.ignored: true
        }

        Loader {
            id: step

            width: parent.width
            sourceComponent: root.onboarding.step === OnboardingModel.Step.welcome ? welcome
                             : root.onboarding.step === OnboardingModel.Step.permission ? permission : done
            onLoaded: root.forceActiveFocus()
        }
    }

    SequentialAnimation {
        id: fade

        NumberAnimation {
            targets: [icon, step]
            property: "opacity"
            from: 0
            to: 1
            duration: Theme.motionDuration * 2
        }
    }

    Connections {
        target: root.onboarding

        function onStepChanged() {
            if (!Theme.reduceMotion)
                fade.restart();
        }
    }

    // Names of the file, in a component made within it.
    // qmllint disable unqualified
    Component {
        id: welcome

        WelcomeStep {
            onboarding: root.onboarding
        }
    }

    Component {
        id: permission

        PermissionStep {
            onboarding: root.onboarding
        }
    }

    Component {
        id: done

        DoneStep {
            onboarding: root.onboarding
        }
    }
    // qmllint enable unqualified
}
