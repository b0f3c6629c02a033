import QtQuick
import QtQuick.Templates as T
import Velloran

T.Button {
    id: control

    required property string glyph
    /// By the mouse that still rests on it, which knows what it does by now.
    property bool isUsed: false

    implicitWidth: Theme.controlHeight
    implicitHeight: Theme.controlHeight
    focusPolicy: Qt.StrongFocus
    hoverEnabled: true
    opacity: enabled ? 1 : 0.45
    Accessible.role: Accessible.Button
    Accessible.name: text
    Accessible.onPressAction: control.clicked()
    onPressed: isUsed = true
    onHoveredChanged: isUsed = false

    contentItem: Item {
        Glyph {
            anchors.centerIn: parent
            name: control.glyph
            ink: Theme.secondaryInk
        }
    }
    Hint {
        isWanted: control.hovered && !control.isUsed && control.text.length > 0
        text: control.text
    }
    background: Rectangle {
        radius: Theme.radius
        color: control.hovered || control.down ? Theme.hover : Theme.panel
        border.color: Theme.strongBorder
        FocusRing { isShown: control.visualFocus }
    }
}
