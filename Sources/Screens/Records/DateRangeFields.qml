import QtQuick
import QtQuick.Layouts
import Velloran

/// A first and a last date to type.
RowLayout {
    id: fields

    property string first
    property string last
    property string complaint
    signal changed(string first, string last)

    spacing: Theme.gap
    onFirstChanged: if (!from.activeFocus) from.text = first
    onLastChanged: if (!to.activeFocus) to.text = last
    InputField {
        id: from
        Layout.preferredWidth: 110
        text: fields.first
        Accessible.name: qsTr("First day")
        onEditingFinished: fields.changed(text, to.text)
    }
    Words {
        text: qsTr("to")
        color: Theme.secondaryInk
    }
    InputField {
        id: to
        Layout.preferredWidth: 110
        text: fields.last
        Accessible.name: qsTr("Last day")
        onEditingFinished: fields.changed(from.text, text)
    }
    Words {
        visible: fields.complaint.length > 0
        text: fields.complaint
        font.pixelSize: Theme.small
        color: Theme.danger
        Accessible.role: Accessible.AlertMessage
        Accessible.name: text
    }
}
