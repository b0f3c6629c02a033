import QtQuick
import Velloran

/// Choices of which one is stored: shown is what is stored, however it came to be.
ChoiceBox {
    id: control

    property string stored
    signal chose(string id)

    function showStored() {
        currentIndex = indexOfValue(stored);
    }
    onStoredChanged: showStored()
    onCountChanged: showStored()
    Component.onCompleted: showStored()
    onActivated: chose(currentValue)
}
