import QtQuick
import QtQuick.Layouts
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
    contentItem: RowLayout {
        spacing: Theme.gap
        Glyph {
            visible: control.checkable
            opacity: control.checked ? 1 : 0
            name: "check"
            size: 12
        }
        Words {
            Layout.fillWidth: true
            text: control.text
            color: control.isDestructive ? Theme.danger : Theme.ink
            Accessible.ignored: true
        }
        Words {
            text: control.shortcutText
            font.pixelSize: Theme.small
            color: Theme.secondaryInk
            Accessible.ignored: true
        }
    }
    background: Rectangle {
        radius: Theme.radius - 2
        color: control.highlighted ? Theme.selection : "transparent"
    }
}
