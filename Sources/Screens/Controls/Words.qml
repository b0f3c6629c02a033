import QtQuick
import Velloran

/// A text of the application.
Text {
    color: Theme.ink
    font.family: Theme.family
    font.pixelSize: Theme.body
    font.hintingPreference: Font.PreferNoHinting
    renderType: Text.NativeRendering
    textFormat: Text.PlainText
    elide: Text.ElideRight
}
