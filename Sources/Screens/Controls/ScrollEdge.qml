import QtQuick
import QtQuick.Templates as T
import Velloran

T.ScrollBar {
    id: control

    implicitWidth: 8
    implicitHeight: 8
    padding: 2
    visible: size < 1
    minimumSize: 0.08
    contentItem: Rectangle {
        implicitWidth: 4
        implicitHeight: 4
        radius: 2
        color: control.pressed || control.hovered ? Theme.secondaryInk : Theme.strongBorder
    }
}
