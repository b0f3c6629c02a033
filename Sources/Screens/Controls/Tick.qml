import QtQuick
import QtQuick.Templates as T
import Velloran

/// One of several that may be chosen.
T.CheckBox {
    id: control

    implicitWidth: indicator.width + Theme.gap + label.implicitWidth
    implicitHeight: Math.max(24, label.implicitHeight)
    opacity: enabled ? 1 : 0.45
    focusPolicy: Qt.StrongFocus
    Accessible.role: Accessible.CheckBox
    Accessible.checkable: true
    Accessible.checked: checked
    Accessible.name: text
    Accessible.onPressAction: press()
    Accessible.onToggleAction: press()
    function press() {
        toggle();
        toggled();
    }

    indicator: Rectangle {
        x: control.mirrored ? control.width - width : 0
        anchors.verticalCenter: parent.verticalCenter
        width: 18
        height: 18
        radius: 4
        color: control.checkState !== Qt.Unchecked ? Theme.accent : Theme.panel
        border.color: control.checkState !== Qt.Unchecked ? Theme.accent : Theme.strongBorder
        FocusRing { isShown: control.visualFocus }
        Glyph {
            anchors.centerIn: parent
            visible: control.checkState !== Qt.Unchecked
            name: control.checkState === Qt.PartiallyChecked ? "minus" : "check"
            size: 12
            ink: Theme.accentInk
        }
    }
    contentItem: Words {
        id: label
        leftPadding: control.mirrored ? 0 : control.indicator.width + Theme.gap
        rightPadding: control.mirrored ? control.indicator.width + Theme.gap : 0
        text: control.text
        wrapMode: Text.WordWrap
        verticalAlignment: Text.AlignVCenter
        Accessible.ignored: true
    }
}
