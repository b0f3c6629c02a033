import QtQuick
import QtQuick.Layouts
import Velloran

/// What a setting is about, with its control at the end of the line.
RowLayout {
    id: row

    property string label
    property string help
    property string complaint
    default property alias control: place.data

    Layout.fillWidth: true
    spacing: Theme.padding
    ColumnLayout {
        Layout.fillWidth: true
        spacing: 2
        Words {
            Layout.fillWidth: true
            visible: text.length > 0
            text: row.label
            font.weight: Font.Medium
            wrapMode: Text.WordWrap
            Accessible.ignored: true
        }
        Words {
            Layout.fillWidth: true
            visible: text.length > 0
            text: row.help
            font.pixelSize: Theme.small
            color: Theme.secondaryInk
            wrapMode: Text.WordWrap
        }
        Words {
            Layout.fillWidth: true
            visible: text.length > 0
            text: row.complaint
            font.pixelSize: Theme.small
            color: Theme.danger
            wrapMode: Text.WordWrap
            Accessible.role: Accessible.AlertMessage
            Accessible.name: text
        }
    }
    RowLayout {
        id: place
        Layout.alignment: Qt.AlignVCenter | Qt.AlignRight
        spacing: Theme.gap
    }
}
