import QtQuick
import Velloran

FocusScope {
    id: screen

    required property ClientsModel clients

    Words {
        anchors.centerIn: parent
        text: qsTr("Clients")
    }
}
