import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Velloran

/// Days that an export leaves out, each with its reason and the way to it.
ColumnLayout {
    id: blocked

    property alias heading: title.text
    property alias model: list.model
    signal dayOpened(string dayID)

    spacing: Theme.unit
    Words {
        id: title
        Layout.fillWidth: true
        font.weight: Font.DemiBold
        color: Theme.warning
    }
    ListView {
        id: list
        Layout.fillWidth: true
        Layout.preferredHeight: Math.min(contentHeight, 3 * 36)
        clip: true
        boundsBehavior: Flickable.StopAtBounds
        T.ScrollBar.vertical: ScrollEdge { }
        Accessible.role: Accessible.List
        Accessible.name: title.text
        delegate: RowLayout {
            id: day
            required property string dayID
            required property string title
            required property string reason
            width: ListView.view.width - 12
            height: 36
            spacing: Theme.gap
            Accessible.role: Accessible.ListItem
            Accessible.name: qsTr("%1: %2").arg(title).arg(reason)
            Words {
                Layout.fillWidth: true
                text: qsTr("%1: %2").arg(day.title).arg(day.reason)
                font.pixelSize: Theme.small
                Accessible.ignored: true
            }
            ActionButton {
                implicitHeight: 28
                text: qsTr("Review")
                Accessible.name: qsTr("Review %1").arg(day.title)
                onClicked: blocked.dayOpened(day.dayID)
            }
        }
    }
}
