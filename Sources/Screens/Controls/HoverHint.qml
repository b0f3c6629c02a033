import QtQuick
import Velloran

/// A hint for what there are many of: it is made when the mouse comes to what it lies over.
Loader {
    id: maker

    property bool isWanted: false
    property string text

    anchors.fill: parent
    active: isWanted
    sourceComponent: Hint {
        isWanted: true
        text: maker.text
    }
}
