import QtQuick
import Velloran

/// A text of the application. Where it does not fit, the mouse that rests on it learns the whole of it.
Text {
    id: words

    color: Theme.ink
    font.family: Theme.family
    font.pixelSize: Theme.body
    font.hintingPreference: Font.PreferNoHinting
    renderType: Text.NativeRendering
    textFormat: Text.PlainText
    // What wraps has its lines, however narrow it is.
    elide: wrapMode === Text.NoWrap ? Text.ElideRight : Text.ElideNone
    // Where the layout begins, whichever way the words run.
    horizontalAlignment: Text.AlignLeft

    // There are many texts, and few that do not fit.
    Loader {
        anchors.fill: parent
        active: words.truncated
        sourceComponent: Item {
            HoverHandler { id: mouse }
            Hint {
                isWanted: mouse.hovered
                text: words.text
            }
        }
    }
}
