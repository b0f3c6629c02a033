import QtQuick
import Velloran

/// One of our icons, in an ink.
Image {
    required property string name
    property color ink: Theme.ink
    property int size: 16

    width: size
    height: size
    sourceSize.width: size * 2
    sourceSize.height: size * 2
    source: "image://glyphs/" + name + "/" + ink
    mirror: LayoutMirroring.enabled && (name === "chevron-left" || name === "chevron-right")
    fillMode: Image.PreserveAspectFit
    Accessible.ignored: true
}
