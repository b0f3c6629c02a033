import QtQuick
import QtQuick.Layouts
import Velloran

/// A label above what it names, with a word of help or complaint below.
ColumnLayout {
    id: row

    property string label
    property string help
    property string complaint
    default property alias content: body.data

    spacing: Theme.unit
    Words {
        Layout.fillWidth: true
        visible: text.length > 0
        text: row.label
        font.pixelSize: Theme.small
        font.weight: Font.Medium
        color: Theme.secondaryInk
        Accessible.ignored: true
    }
    RowLayout {
        id: body
        Layout.fillWidth: true
        spacing: Theme.gap
    }
    Words {
        Layout.fillWidth: true
        visible: text.length > 0
        text: row.complaint.length > 0 ? row.complaint : row.help
        font.pixelSize: Theme.small
        wrapMode: Text.WordWrap
        color: row.complaint.length > 0 ? Theme.danger : Theme.secondaryInk
        Accessible.role: row.complaint.length > 0 ? Accessible.AlertMessage : Accessible.StaticText
        Accessible.name: text
    }
}
