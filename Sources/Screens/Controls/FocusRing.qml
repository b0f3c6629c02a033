import QtQuick
import Velloran

/// Around what has the keyboard.
Rectangle {
    property bool isShown: false

    anchors.fill: parent
    anchors.margins: -3
    visible: isShown
    color: "transparent"
    radius: Theme.radius + 3
    border.width: 2
    border.color: Theme.accent
}
