import QtQuick
import QtQuick.Templates as T
import Velloran

/// Words that lead somewhere.
T.AbstractButton {
    id: control

    property color color: Theme.accent

    implicitWidth: implicitContentWidth
    implicitHeight: Math.max(20, implicitContentHeight)
    focusPolicy: Qt.StrongFocus
    hoverEnabled: true
    Accessible.role: Accessible.Link
    Accessible.name: text
    Accessible.onPressAction: control.clicked()
    Keys.onReturnPressed: control.clicked()
    HoverHandler { cursorShape: Qt.PointingHandCursor }
    contentItem: Words {
        text: control.text
        color: control.color
        font.underline: control.hovered
        font.weight: Font.Medium
        wrapMode: Text.WordWrap
        verticalAlignment: Text.AlignVCenter
        Accessible.ignored: true
    }
    background: Item {
        FocusRing { isShown: control.visualFocus }
    }
}
