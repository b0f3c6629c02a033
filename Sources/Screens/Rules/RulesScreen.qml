import QtQuick
import Velloran

FocusScope {
    id: screen

    required property RulesModel rules

    Words {
        anchors.centerIn: parent
        text: qsTr("Rules")
    }
}
