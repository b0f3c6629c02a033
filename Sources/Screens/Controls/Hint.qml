import QtQuick
import Velloran

/// What the mouse rests on, in words. Nearly everything has a hint, and few are ever read: it is made when it is wanted.
Loader {
    id: hint

    property bool isWanted: false
    property string text
    /// In milliseconds.
    property int delay: 500

    anchors.fill: parent
    active: isWanted
    sourceComponent: HintPopup {
        text: hint.text
        delay: hint.delay
    }
}
