import QtQuick
import QtQuick.Layouts
import Velloran

/// How time is rounded when it is billed. Shown is what is stored, however it came to be.
FormRow {
    id: row

    property alias roundings: box.model
    property string stored
    property string name
    signal chose(string rounding)

    label: qsTr("Rounding")
    onStoredChanged: box.showStored()
    ChoiceBox {
        id: box

        function showStored() {
            currentIndex = indexOfValue(row.stored);
        }
        Layout.fillWidth: true
        Accessible.name: row.name
        onActivated: {
            const chosen = currentValue;
            showStored();
            row.chose(chosen);
        }
        onCountChanged: showStored()
        Component.onCompleted: showStored()
    }
}
