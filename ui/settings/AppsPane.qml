import QtQuick
import Fadewell.Forms
import Fadewell.Settings
import Fadewell.Style

FormPage {
    id: root

    required property AppsPaneModel pane
    property bool isConfirmingForgetAll: false
    readonly property bool isEmpty: pane.apps.count === 0

    Accessible.role: Accessible.Pane
    Accessible.name: qsTr("Apps")

    Item {
        width: parent.width
        height: 280
        visible: root.isEmpty

        Column {
            anchors.centerIn: parent
            width: Math.min(parent.width, 340)
            spacing: 8

            Symbol {
                anchors.horizontalCenter: parent.horizontalCenter
                size: 44
                name: "square.grid.2x2"
                color: Theme.secondaryText
            }

            Text {
                width: parent.width
                text: qsTr("No Remembered Apps")
                textFormat: Text.PlainText
                horizontalAlignment: Text.AlignHCenter
                color: Theme.text
                font.pixelSize: Theme.bodySize * 1.2
                font.weight: Font.DemiBold
                Accessible.role: Accessible.Heading
                Accessible.name: text
                Accessible.ignored: !visible
            }

            FormNote {
                width: parent.width
                text: qsTr("When you change an app’s volume or output, Fadewell remembers it and uses it again the next time the app plays sound.")
                horizontalAlignment: Text.AlignHCenter
                font.pixelSize: Theme.subheadlineSize
            }
        }
    }

    FormSection {
        visible: !root.isEmpty
        footer: qsTr("Fadewell uses these settings whenever the app plays sound.")
        footerItem: PushButton {
            objectName: "forgetAll"
            name: qsTr("Forget All")
            isDestructive: true
            onClicked: root.isConfirmingForgetAll = true
        }

        Repeater {
            model: root.pane.apps

            // Names of the file, in a component made within it.
            // qmllint disable unqualified
            RememberedAppRow {
                onForgotten: root.pane.forget(appID)
            }
            // qmllint enable unqualified
        }
    }

    AlertSheet {
        readonly property int cancel: 1

        title: qsTr("Forget All Apps?")
        message: qsTr("Every app plays at its own volume and on its own output again.")
        buttons: [qsTr("Forget All"), qsTr("Cancel")]
        destructiveButton: 0
        defaultButton: cancel
        escapeAnswer: cancel
        visible: root.isConfirmingForgetAll
        onAnswered: answer => {
            root.isConfirmingForgetAll = false;
            if (answer !== cancel)
                root.pane.forgetAll();
        }
    }
}
