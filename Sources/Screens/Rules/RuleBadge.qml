import QtQuick
import Velloran

/// A word about a rule that is not as the others are.
Rectangle {
    id: badge

    property alias text: label.text
    property color ink: Theme.secondaryInk

    implicitWidth: label.implicitWidth + 14
    implicitHeight: 18
    radius: height / 2
    color: "transparent"
    border.color: ink

    Words {
        id: label
        anchors.centerIn: parent
        width: Math.min(implicitWidth, badge.width - 14)
        font.pixelSize: Theme.caption
        font.weight: Font.Medium
        color: badge.ink
        Accessible.ignored: true
    }
}
