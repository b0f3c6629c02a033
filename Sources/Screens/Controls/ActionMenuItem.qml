import QtQuick
import QtQuick.Templates as T
import Velloran

T.MenuItem {
    id: control

    property string shortcutText
    property bool isDestructive: false

    implicitWidth: 212
    implicitHeight: 30
    leftPadding: 8
    rightPadding: 8
    opacity: enabled ? 1 : 0.45
    Accessible.role: Accessible.MenuItem
    Accessible.name: text
    Accessible.onPressAction: {
        control.triggered();
        if (control.menu)
            control.menu.dismiss();
    }
    contentItem: Item {
        Words {
            id: label
            anchors.verticalCenter: parent.verticalCenter
            width: parent.width - keys.implicitWidth - (control.checkable ? 20 : 4)
            x: control.checkable ? 20 : 0
            text: control.text
            color: control.isDestructive ? Theme.danger : Theme.ink
            Accessible.ignored: true
        }
        Words {
            id: keys
            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            text: control.shortcutText
            font.pixelSize: Theme.small
            color: Theme.secondaryInk
            Accessible.ignored: true
        }
        Glyph {
            anchors.verticalCenter: parent.verticalCenter
            visible: control.checkable && control.checked
            name: "check"
            size: 12
        }
    }
    background: Rectangle {
        radius: Theme.radius - 2
        color: control.highlighted ? Theme.selection : "transparent"
    }
}
