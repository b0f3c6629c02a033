import QtQuick
import QtQuick.Templates as T
import Velloran

T.Button {
    id: control

    property bool isPrimary: false
    property bool isDestructive: false

    implicitHeight: Theme.controlHeight
    implicitWidth: Math.max(implicitContentWidth + 2 * Theme.padding, Theme.controlHeight)
    opacity: enabled ? 1 : 0.45
    focusPolicy: Qt.StrongFocus
    hoverEnabled: true
    font.family: Theme.family
    font.pixelSize: Theme.body
    font.weight: Font.DemiBold

    Accessible.role: Accessible.Button
    Accessible.name: text
    Accessible.onPressAction: control.clicked()

    contentItem: Words {
        text: control.text
        font: control.font
        color: control.isPrimary ? Theme.accentInk : control.isDestructive ? Theme.danger : Theme.ink
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
        Accessible.ignored: true
    }
    background: Rectangle {
        radius: Theme.radius
        color: control.isPrimary ? (control.down ? Qt.darker(Theme.accent, 1.15) : Theme.accent)
                                 : (control.down || control.hovered ? Theme.hover : Theme.panel)
        border.width: control.isPrimary ? 0 : 1
        border.color: Theme.strongBorder
        FocusRing { isShown: control.visualFocus }
    }
}
