import QtQuick
import Fadewell.Style

// The speaker that mutes and unmutes; its waves fill with the level.
IconButton {
    id: root

    required property bool isMuted

    signal muteChosen(bool isMuted)

    name: isMuted ? qsTr("Unmute") : qsTr("Mute")
    symbol: isMuted ? "speaker.slash.fill" : "speaker.wave.3.fill"
    color: Theme.secondaryText
    onClicked: root.muteChosen(!root.isMuted)
    Accessible.checkable: true
    Accessible.checked: isMuted
    Accessible.onToggleAction: root.muteChosen(!root.isMuted)
}
