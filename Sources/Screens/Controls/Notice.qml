import QtQuick
import QtQuick.Layouts
import Velloran

/// A sentence about what did not happen, where its reader is looking.
Panel {
    id: notice

    property alias text: sentence.text
    signal dismissed()

    implicitHeight: Math.max(row.implicitHeight + Theme.gap * 2, 44)
    border.color: Theme.warning
    Accessible.role: Accessible.AlertMessage
    Accessible.name: text

    RowLayout {
        id: row
        anchors.fill: parent
        anchors.leftMargin: Theme.padding
        anchors.rightMargin: Theme.gap
        Words {
            id: sentence
            Layout.fillWidth: true
            wrapMode: Text.WordWrap
            color: Theme.warning
        }
        ActionButton {
            text: qsTr("Dismiss")
            onClicked: notice.dismissed()
        }
    }
}
