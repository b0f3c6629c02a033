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
    implicitWidth: Math.min(contentItem.implicitWidth, 440) + leftPadding + rightPadding
    implicitHeight: contentItem.implicitHeight + topPadding + bottomPadding
    margins: 6
    padding: 6
    leftPadding: 8
    rightPadding: 8
    delay: 500
    closePolicy: T.Popup.CloseOnEscape | T.Popup.CloseOnPressOutsideParent
    contentItem: Text {
        text: control.text
        font.family: Theme.family
        font.pixelSize: Theme.small
        font.hintingPreference: Font.PreferNoHinting
        renderType: Text.NativeRendering
        textFormat: Text.PlainText
        color: Theme.hintInk
        wrapMode: Text.Wrap
    }
    background: Rectangle {
        radius: Theme.radius
        color: Theme.hintGround
    }
}
