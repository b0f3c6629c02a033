import QtQuick
import QtQuick.Layouts
import Velloran

/// What is wrong, over the whole width of the window, and what to do about it.
Rectangle {
    id: banner

    property alias heading: title.text
    property alias text: sentence.text
    property alias actionText: action.text
    property alias isActionEnabled: action.enabled
    property bool isDismissible: false
    signal acted()
    signal dismissed()

    Layout.fillWidth: true
    implicitHeight: row.implicitHeight + 2 * Theme.gap + 1
    color: Theme.warningGround
    Accessible.role: Accessible.AlertMessage
    Accessible.name: heading.length > 0 ? qsTr("%1 %2").arg(heading).arg(text) : text

    RowLayout {
        id: row
        anchors.fill: parent
        anchors.leftMargin: Theme.margin
        anchors.rightMargin: Theme.padding
        anchors.bottomMargin: 1
        spacing: Theme.padding
        Glyph {
            name: "warning"
            ink: Theme.warning
        }
        ColumnLayout {
            Layout.fillWidth: true
            spacing: 2
            Words {
                id: title
                Layout.fillWidth: true
                visible: text.length > 0
                font.weight: Font.DemiBold
                wrapMode: Text.WordWrap
            }
            Words {
                id: sentence
                Layout.fillWidth: true
                visible: text.length > 0
                wrapMode: Text.WordWrap
            }
        }
        ActionButton {
            id: action
            visible: text.length > 0
            onClicked: banner.acted()
        }
        IconButton {
            visible: banner.isDismissible
            glyph: "close"
            text: qsTr("Dismiss")
            onClicked: banner.dismissed()
        }
    }
    Rectangle {
        anchors.bottom: parent.bottom
        width: parent.width
        height: 1
        color: Theme.border
    }
}
