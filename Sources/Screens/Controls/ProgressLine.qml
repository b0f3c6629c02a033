import QtQuick
import QtQuick.Templates as T
import Velloran

/// How far something is, from 0 to 1.
T.ProgressBar {
    id: control

    implicitWidth: 200
    implicitHeight: 6
    Accessible.role: Accessible.ProgressBar
    background: Rectangle {
        radius: 3
        color: Theme.sunken
    }
    contentItem: Item {
        Rectangle {
            width: Math.round(control.visualPosition * parent.width)
            height: parent.height
            radius: 3
            color: Theme.accent
        }
    }
}
