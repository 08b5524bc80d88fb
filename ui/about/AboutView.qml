import QtQuick
import Fadewell.Style

// The program, its version, and what it owes to others.
Rectangle {
    id: root

    required property string version
    required property string creditsHeading
    required property string creditsNotice

    LayoutMirroring.enabled: Theme.isMirrored
    LayoutMirroring.childrenInherit: true

    width: 380
    height: 440
    color: Theme.window
    Accessible.role: Accessible.Dialog
    Accessible.name: qsTr("About Fadewell")

    Shortcut {
        sequences: ["Escape", "Ctrl+W"]
        onActivated: root.Window.window.close()
    }

    Column {
        id: program

        anchors.top: parent.top
        anchors.topMargin: 24
        anchors.horizontalCenter: parent.horizontalCenter
        width: parent.width - 40
        spacing: 4

        Image {
            anchors.horizontalCenter: parent.horizontalCenter
            width: 80
            height: 80
            sourceSize.width: 80 * Screen.devicePixelRatio
            sourceSize.height: 80 * Screen.devicePixelRatio
            source: "qrc:/fadewell/about/icon.svg"
            Accessible.ignored: true
        }

        Text {
            width: parent.width
            topPadding: 8
            horizontalAlignment: Text.AlignHCenter
            text: "Fadewell"
            textFormat: Text.PlainText
            color: Theme.text
            font.pixelSize: Theme.bodySize * 1.5
            font.weight: Font.DemiBold
            Accessible.role: Accessible.Heading
        }

        Text {
            width: parent.width
            horizontalAlignment: Text.AlignHCenter
            text: qsTr("Version %1").arg(root.version)
            textFormat: Text.PlainText
            color: Theme.secondaryText
            font.pixelSize: Theme.subheadlineSize
        }

        Text {
            width: parent.width
            horizontalAlignment: Text.AlignHCenter
            text: qsTr("Copyright © 2026 The Fadewell authors")
            textFormat: Text.PlainText
            wrapMode: Text.Wrap
            color: Theme.secondaryText
            font.pixelSize: Theme.captionSize
        }
    }

    Rectangle {
        anchors.top: program.bottom
        anchors.topMargin: 18
        anchors.bottom: parent.bottom
        anchors.bottomMargin: 20
        anchors.horizontalCenter: parent.horizontalCenter
        width: parent.width - 40
        radius: 8
        color: Theme.raised
        border.color: credits.activeFocus ? Theme.accent : Theme.border

        Flickable {
            id: credits

            anchors.fill: parent
            anchors.margins: 1
            contentHeight: texts.height
            boundsBehavior: Flickable.StopAtBounds
            clip: true
            focus: true
            activeFocusOnTab: true
            Accessible.role: Accessible.Pane
            Accessible.name: root.creditsHeading

            Keys.onUpPressed: flick(0, 500)
            Keys.onDownPressed: flick(0, -500)

            Column {
                id: texts

                width: credits.width
                padding: 12
                spacing: Theme.captionSize

                Text {
                    width: parent.width - 24
                    text: root.creditsHeading
                    textFormat: Text.PlainText
                    color: Theme.text
                    font.pixelSize: Theme.bodySize
                    font.weight: Font.DemiBold
                    Accessible.role: Accessible.Heading
                }

                Text {
                    width: parent.width - 24
                    horizontalAlignment: Text.AlignLeft // It is English in every language.
                    text: root.creditsNotice
                    textFormat: Text.PlainText
                    wrapMode: Text.Wrap
                    color: Theme.secondaryText
                    font.pixelSize: Theme.captionSize
                }
            }
        }

        Rectangle {
            anchors.right: parent.right
            anchors.rightMargin: 3
            visible: credits.contentHeight > credits.height
            y: 3 + credits.visibleArea.yPosition * (parent.height - 6)
            width: 4
            height: credits.visibleArea.heightRatio * (parent.height - 6)
            radius: 2
            color: Theme.track
        }
    }
}
