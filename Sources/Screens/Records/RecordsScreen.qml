import QtQuick
import Velloran

FocusScope {
    id: screen

    required property RecordsModel records

    Words {
        anchors.centerIn: parent
        text: qsTr("Records")
    }
}
