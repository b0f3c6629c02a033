import QtQuick
import QtQuick.Templates as T
import Velloran

/// One of several named choices, each with a colour or none.
T.ComboBox {
    id: control

    property string placeholder
    property color dot: "transparent"

    implicitHeight: Theme.controlHeight
    implicitWidth: 200
    textRole: "name"
    valueRole: "choiceID"
    font.family: Theme.family
    font.pixelSize: Theme.body
    opacity: enabled ? 1 : 0.45
    hoverEnabled: true
    Accessible.role: Accessible.ComboBox
    Accessible.onPressAction: control.popup.open()

    contentItem: Words {
        leftPadding: 10
        rightPadding: 28
        text: control.currentIndex >= 0 ? control.displayText : control.placeholder
        color: control.currentIndex >= 0 ? Theme.ink : Theme.secondaryInk
        verticalAlignment: Text.AlignVCenter
        Accessible.ignored: true
    }
    indicator: Glyph {
        x: control.width - width - 10
        anchors.verticalCenter: parent.verticalCenter
        name: "chevron-down"
        ink: Theme.secondaryInk
        size: 12
    }
    background: Rectangle {
        color: Theme.panel
        border.color: Theme.strongBorder
        radius: Theme.radius
        FocusRing { isShown: control.visualFocus }
    }
    delegate: T.ItemDelegate {
        id: choice

        readonly property string name: control.textAt(index)
        required property int index

        width: control.popup.width - 8
        height: Theme.controlHeight
        highlighted: control.highlightedIndex === index
        Accessible.role: Accessible.ListItem
        Accessible.onPressAction: {
            control.currentIndex = index;
            control.activated(index);
            // Last: the row goes with it.
            control.popup.close();
        }
        Accessible.name: name
        contentItem: Words {
            leftPadding: 6
            text: choice.name
            verticalAlignment: Text.AlignVCenter
            Accessible.ignored: true
        }
        background: Rectangle {
            radius: Theme.radius - 2
            color: choice.highlighted ? Theme.selection : "transparent"
        }
    }
    popup: T.Popup {
        y: control.height + 2
        width: control.width
        height: Math.min(contentItem.implicitHeight + 8, 280)
        padding: 4
        contentItem: ListView {
            clip: true
            implicitHeight: contentHeight
            model: control.popup.visible ? control.delegateModel : null
            currentIndex: control.highlightedIndex
        }
        background: Panel { border.color: Theme.strongBorder }
    }
}
