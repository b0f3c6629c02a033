import QtQuick
import QtQuick.Templates as T
import Velloran

T.TextField {
    id: control

    implicitHeight: Theme.controlHeight
    implicitWidth: 200
    leftPadding: 10
    rightPadding: 10
    color: Theme.ink
    selectionColor: Theme.accent
    selectedTextColor: Theme.accentInk
    placeholderTextColor: Theme.secondaryInk
    font.family: Theme.family
    font.pixelSize: Theme.body
    renderType: Text.NativeRendering
    verticalAlignment: Text.AlignVCenter
    Accessible.role: Accessible.EditableText

    background: Rectangle {
        color: Theme.panel
        border.color: Theme.strongBorder
        radius: Theme.radius
        FocusRing { isShown: control.activeFocus }
    }
    Words {
        anchors.fill: parent
        anchors.leftMargin: control.LayoutMirroring.enabled ? control.rightPadding : control.leftPadding
        visible: control.length === 0 && control.preeditText.length === 0
        text: control.placeholderText
        color: control.placeholderTextColor
        verticalAlignment: Text.AlignVCenter
        Accessible.ignored: true
    }
}
