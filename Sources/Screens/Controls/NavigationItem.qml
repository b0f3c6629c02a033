import QtQuick
import QtQuick.Templates as T
import Velloran

/// One of the screens, in the sidebar.
T.TabButton {
    id: control

    required property string glyph
    property bool isChosen: false
    property int count: 0
    /// Without its words.
    property bool isNarrow: Theme.isNarrow

    implicitHeight: 34
    checkable: false
    hoverEnabled: true
    focusPolicy: Qt.StrongFocus
    Accessible.name: count > 0 ? qsTr("%1, %2").arg(text).arg(count) : text
    Accessible.selected: isChosen
    Accessible.onPressAction: control.clicked()

    contentItem: Item {
        Glyph {
            anchors.left: parent.left
            anchors.leftMargin: 10
            anchors.verticalCenter: parent.verticalCenter
            name: control.glyph
            ink: control.isChosen ? Theme.accent : Theme.secondaryInk
        }
        Words {
            anchors.left: parent.left
            anchors.leftMargin: 36
            anchors.right: parent.right
            anchors.rightMargin: 24
            visible: !control.isNarrow
            anchors.verticalCenter: parent.verticalCenter
            text: control.text
            font.weight: Font.DemiBold
            color: control.isChosen ? Theme.accent : Theme.ink
            Accessible.ignored: true
        }
        Words {
            anchors.right: parent.right
            anchors.rightMargin: control.isNarrow ? 2 : 10
            anchors.verticalCenter: parent.verticalCenter
            visible: control.count > 0
            text: control.count
            font.pixelSize: Theme.small
            color: control.isChosen ? Theme.accent : Theme.secondaryInk
            Accessible.ignored: true
        }
    }
    Hint {
        isWanted: control.hovered && control.isNarrow
        text: control.text
    }
    background: Rectangle {
        radius: Theme.radius
        color: control.isChosen ? Theme.selection : control.hovered ? Theme.hover : "transparent"
        FocusRing { isShown: control.visualFocus }
    }
}
