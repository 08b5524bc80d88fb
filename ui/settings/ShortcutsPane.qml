import QtQuick
import Fadewell.Forms
import Fadewell.Recorder
import Fadewell.Settings

FormPage {
    id: root

    required property ShortcutsPaneModel pane
    readonly property string stepsFooter: qsTr("Changes the volume of the app you’re using in steps of 10 %, up to its own level. Shortcuts work in every app.")

    Accessible.role: Accessible.Pane
    Accessible.name: qsTr("Shortcuts")

    FormSection {
        visible: root.pane.canRecord

        Repeater {
            model: root.pane.toggles

            ShortcutRow {
                required property var modelData

                field: modelData
            }
        }
    }

    FormSection {
        visible: root.pane.canRecord
        footer: root.stepsFooter

        Repeater {
            model: root.pane.steps

            ShortcutRow {
                required property var modelData

                field: modelData
            }
        }
    }

    FormSection {
        visible: root.pane.isAssignedByDesktop
        footer: qsTr("Your desktop assigns these shortcuts: change them in its keyboard settings.") + " " + root.stepsFooter

        Repeater {
            model: [...root.pane.toggles, ...root.pane.steps]

            FormValue {
                required property int index
                required property var modelData

                title: modelData.title
                // Names of the file, in a component made within it.
                // qmllint disable unqualified
                value: root.pane.assigned[index]
                // qmllint enable unqualified
            }
        }
    }

    FormSection {
        visible: !root.pane.canRecord && !root.pane.isAssignedByDesktop
        footer: qsTr("This desktop doesn’t give shortcuts to apps. In its keyboard settings you can assign shortcuts to these commands yourself.")

        FormValue {
            title: qsTr("Turn Microphone On or Off")
            value: "fadewellctl toggle-microphone"
        }

        FormValue {
            title: qsTr("Turn Call Mode On or Off")
            value: "fadewellctl toggle-call-mode"
        }

        FormValue {
            title: qsTr("Turn Up the App in Front")
            value: "fadewellctl raise-frontmost"
        }

        FormValue {
            title: qsTr("Turn Down the App in Front")
            value: "fadewellctl lower-frontmost"
        }
    }
}
