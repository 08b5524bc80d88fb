import QtQuick
import Fadewell.Style

// One app: what it is, how loud it is and where it plays. Shows what it is given, and asks.
Item {
    id: root

    required property int index
    required property string appID
    required property string name
    required property string icon
    required property real volume
    required property string percent
    required property bool isMuted
    required property int waves
    required property string badge
    required property string outputSymbol
    required property string outputName
    required property bool isRouted
    required property string obstacle
    required property real percentWidth
    readonly property bool isControllable: obstacle === ""

    signal volumeChosen(real volume)
    signal muteChosen(bool isMuted)
    signal outputMenuRequested(Item button)
    signal tabbedOut(bool forward) // the keyboard leaves the row

    // False where there is nothing to operate.
    function takeFocus(forward: bool): bool {
        if (forward)
            output.forceActiveFocus();
        else
            slider.forceActiveFocus();
        return isControllable;
    }

    implicitHeight: content.implicitHeight + 12
    Accessible.role: Accessible.ListItem
    Accessible.name: name
    Accessible.description: obstacle

    Column {
        id: content

        x: 14
        y: 6
        width: parent.width - 28
        spacing: 2

        Item {
            width: parent.width
            height: Theme.iconSize

            Image {
                id: picture

                anchors.left: parent.left
                width: Theme.iconSize
                height: Theme.iconSize
                sourceSize.width: width * Screen.devicePixelRatio
                sourceSize.height: height * Screen.devicePixelRatio
                fillMode: Image.PreserveAspectFit
                smooth: true
                mipmap: true
                source: root.icon
                Accessible.ignored: true
            }

            Text {
                anchors.left: picture.right
                anchors.leftMargin: 8
                anchors.right: status.left
                anchors.rightMargin: status.text === "" ? 0 : 8
                anchors.verticalCenter: parent.verticalCenter
                text: root.name
                textFormat: Text.PlainText
                elide: Text.ElideRight
                maximumLineCount: 1
                horizontalAlignment: Text.AlignLeft
                color: Theme.text
                font.pixelSize: Theme.bodySize
                Accessible.role: Accessible.Heading
                Accessible.name: root.name
            }

            Text {
                id: status

                anchors.right: output.left
                anchors.rightMargin: 8
                anchors.verticalCenter: parent.verticalCenter
                text: root.badge
                textFormat: Text.PlainText
                color: Theme.secondaryText
                font.pixelSize: Theme.captionSize
                Accessible.role: Accessible.StaticText
                Accessible.name: text
                Accessible.ignored: text === ""
            }

            OutputMenu {
                id: output
                objectName: "output"

                anchors.right: parent.right
                enabled: root.isControllable
                symbol: root.outputSymbol
                deviceName: root.outputName
                isRouted: root.isRouted
                onClicked: root.outputMenuRequested(output)
                Keys.onBacktabPressed: root.tabbedOut(false)
            }
        }

        Item {
            width: parent.width
            height: slider.height

            MuteToggle {
                id: mute

                anchors.left: parent.left
                anchors.verticalCenter: parent.verticalCenter
                enabled: root.isControllable
                isMuted: root.isMuted
                waves: root.waves
                onMuteChosen: isMuted => root.muteChosen(isMuted)
            }

            VolumeSlider {
                id: slider

                anchors.left: mute.right
                anchors.leftMargin: 8
                anchors.right: label.left
                anchors.rightMargin: 8
                enabled: root.isControllable
                level: root.volume
                onLevelChosen: level => root.volumeChosen(level)
                Keys.onTabPressed: root.tabbedOut(true)
            }

            PercentLabel {
                id: label

                anchors.right: parent.right
                anchors.verticalCenter: parent.verticalCenter
                width: Math.ceil(root.percentWidth)
                visible: root.isControllable
                text: root.percent
            }
        }

        Text {
            width: parent.width
            visible: text !== ""
            leftPadding: root.LayoutMirroring.enabled ? 0 : Theme.iconSize + 8
            rightPadding: root.LayoutMirroring.enabled ? Theme.iconSize + 8 : 0
            text: root.obstacle
            textFormat: Text.PlainText
            wrapMode: Text.Wrap
            horizontalAlignment: Text.AlignLeft
            color: Theme.secondaryText
            font.pixelSize: Theme.captionSize
            Accessible.ignored: true
        }
    }
}
