import QtQuick
import Velloran

/// A client's name in its colour.
Rectangle {
    id: chip

    property alias text: label.text
    property color client: Theme.anonymous

    implicitWidth: Math.min(label.implicitWidth + 16, 160)
    implicitHeight: 20
    radius: height / 2
    color: Theme.chipGround(client)

    Words {
        id: label
        anchors.centerIn: parent
        width: Math.min(implicitWidth, chip.width - 16)
        font.pixelSize: Theme.caption
        font.weight: Font.DemiBold
        color: Theme.chipInk(chip.client)
    }
}
