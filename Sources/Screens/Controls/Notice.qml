import QtQuick
import QtQuick.Layouts
import Velloran

/// A sentence about what did not happen, or what did, where its reader is looking.
Panel {
    id: notice

    property alias text: sentence.text
    property bool isGood: false
    readonly property color ink: isGood ? Theme.good : Theme.warning
    signal dismissed()

    implicitHeight: Math.max(row.implicitHeight + Theme.gap * 2, 44)
    border.color: ink
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
            color: notice.ink
        }
        ActionButton {
            text: qsTr("Dismiss")
            onClicked: notice.dismissed()
        }
    }
}
