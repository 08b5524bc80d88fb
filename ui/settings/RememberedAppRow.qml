import QtQuick
import Fadewell.Forms
import Fadewell.Style

// What is saved for an app.
FormRow {
    id: root

    required property string appID
    required property string name
    required property string icon
    required property string summary

    signal forgotten

    dividerInset: 46

    Item {
        width: parent.width
        implicitHeight: Math.max(24, forget.implicitHeight, label.implicitHeight)

        Image {
            id: picture

            anchors.left: parent.left
            anchors.verticalCenter: parent.verticalCenter
            width: 24
            height: 24
            sourceSize.width: 24 * Screen.devicePixelRatio
            sourceSize.height: 24 * Screen.devicePixelRatio
            fillMode: Image.PreserveAspectFit
            source: root.icon
            Accessible.ignored: true
        }

        Text {
            id: label

            anchors.left: picture.right
            anchors.leftMargin: 10
            anchors.verticalCenter: parent.verticalCenter
            width: Math.min(implicitWidth, parent.width * 0.42)
            text: root.name
            textFormat: Text.PlainText
            elide: Text.ElideRight
            color: Theme.text
            font.pixelSize: Theme.bodySize
            Accessible.role: Accessible.StaticText
            Accessible.name: root.name + ": " + root.summary
        }

        Text {
            anchors.left: label.right
            anchors.leftMargin: 12
            anchors.right: forget.left
            anchors.rightMargin: 12
            anchors.verticalCenter: parent.verticalCenter
            text: root.summary
            textFormat: Text.PlainText
            elide: Text.ElideRight
            horizontalAlignment: Text.AlignRight
            color: Theme.secondaryText
            font.pixelSize: Theme.subheadlineSize
            Accessible.ignored: true
        }

        PushButton {
            id: forget

            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            name: qsTr("Forget")
            Accessible.name: qsTr("Forget %1").arg(root.name)
            onClicked: root.forgotten()
        }
    }
}
