import QtQuick
import QtQuick.Templates as T
import Velloran

/// On or off, at once.
T.Switch {
    id: control

    implicitWidth: text.length > 0 ? indicator.width + Theme.gap + label.implicitWidth : indicator.width
    implicitHeight: Math.max(24, label.implicitHeight)
    opacity: enabled ? 1 : 0.45
    focusPolicy: Qt.StrongFocus
    hoverEnabled: true
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
        width: 36
        height: 20
        radius: 10
        color: control.checked ? Theme.accent : Theme.strongBorder
        FocusRing {
            radius: 13
            isShown: control.visualFocus
        }
        Rectangle {
            x: control.checked !== control.mirrored ? 18 : 2
            y: 2
            width: 16
            height: 16
            radius: 8
            color: control.checked ? Theme.accentInk : Theme.panel
            Behavior on x { NumberAnimation { duration: Theme.quick } }
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
