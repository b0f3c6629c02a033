import QtQuick
import QtQuick.Templates as T
import Velloran

/// What the mouse rests on, in words.
T.ToolTip {
    id: control

    /// The mouse rests there; rows may feel it before they are in a window.
    property bool isWanted: false

    visible: isWanted && parent !== null && parent.Window.window !== null
    x: parent ? Math.round((parent.width - implicitWidth) / 2) : 0
    y: parent ? parent.height + 4 : 0
    implicitWidth: contentItem.implicitWidth + leftPadding + rightPadding
    implicitHeight: contentItem.implicitHeight + topPadding + bottomPadding
    margins: 6
    padding: 6
    leftPadding: 8
    rightPadding: 8
    delay: 500
    closePolicy: T.Popup.CloseOnEscape | T.Popup.CloseOnPressOutsideParent
    contentItem: Words {
        text: control.text
        font.pixelSize: Theme.small
        color: Theme.hintInk
        elide: Text.ElideNone
    }
    background: Rectangle {
        radius: Theme.radius
        color: Theme.hintGround
    }
}
