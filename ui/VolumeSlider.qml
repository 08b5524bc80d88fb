import Fadewell.Style

LevelSlider {
    name: qsTr("Volume")
}
