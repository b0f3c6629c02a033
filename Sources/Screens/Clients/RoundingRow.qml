import QtQuick
import QtQuick.Layouts
import Velloran

/// How time is rounded when it is billed.
FormRow {
    id: row

    property alias roundings: box.model
    property alias stored: box.stored
    property string name
    signal chose(string rounding)

    label: qsTr("Rounding")
    StoredChoice {
        id: box
        Layout.fillWidth: true
        Accessible.name: row.name
        onChose: (rounding) => row.chose(rounding)
    }
}
