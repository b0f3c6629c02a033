import QtQuick
import Velloran

/// A choice that follows what was chosen elsewhere, also while its rows come and go.
ChoiceBox {
    id: control

    property string chosen
    signal chose(string choice)

    function follow() {
        currentIndex = Math.max(0, indexOfValue(chosen));
    }
    onChosenChanged: follow()
    onCountChanged: follow()
    Component.onCompleted: follow()
    onActivated: chose(currentValue)
}
