import QtQuick
import QtQuick.Layouts
import Velloran

/// Where a new entry of a list is named, in its place. Enter adds it, Escape gives it up.
ColumnLayout {
    id: entry

    property string label
    property string complaint
    signal entered(string name)
    signal givenUp()

    function begin() {
        visible = true;
        field.forceActiveFocus(Qt.OtherFocusReason);
    }
    function end() {
        field.clear();
        visible = false;
    }
    function giveUp() {
        end();
        givenUp();
    }

    visible: false
    spacing: Theme.unit
    RowLayout {
        Layout.fillWidth: true
        spacing: Theme.unit
        InputField {
            id: field
            Layout.fillWidth: true
            placeholderText: entry.label
            Accessible.name: entry.label
            onAccepted: entry.entered(text)
            Keys.onEscapePressed: entry.giveUp()
        }
        ActionButton {
            text: qsTr("Add")
            enabled: field.length > 0
            onClicked: entry.entered(field.text)
        }
        IconButton {
            glyph: "close"
            text: qsTr("Cancel")
            onClicked: entry.giveUp()
        }
    }
    Words {
        Layout.fillWidth: true
        visible: text.length > 0
        text: entry.complaint
        font.pixelSize: Theme.small
        wrapMode: Text.WordWrap
        color: Theme.danger
        Accessible.role: Accessible.AlertMessage
        Accessible.name: text
    }
}
