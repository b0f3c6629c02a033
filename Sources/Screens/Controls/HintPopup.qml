import QtQuick
import QtQuick.Templates as T
import Velloran

/// The words of a hint.
T.ToolTip {
    id: control

    // The mouse may rest on a row before that is in a window.
    visible: parent !== null && parent.Window.window !== null
    x: parent ? Math.round((parent.width - implicitWidth) / 2) : 0
    y: parent ? parent.height + 4 : 0
    implicitWidth: Math.min(contentItem.implicitWidth, 440) + leftPadding + rightPadding
    implicitHeight: contentItem.implicitHeight + topPadding + bottomPadding
    margins: 6
    padding: 6
    leftPadding: 8
    rightPadding: 8
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
