import QtQuick
import Velloran

InputField {
    id: control

    property bool isClearedByEscape: true

    leftPadding: 32
    rightPadding: length > 0 ? 32 : 10
    Accessible.role: Accessible.EditableText
    Accessible.searchEdit: true
    Accessible.name: placeholderText
    Keys.onEscapePressed: (event) => {
        event.accepted = isClearedByEscape && length > 0;
        if (event.accepted)
            clear();
    }

    Glyph {
        x: 10
        anchors.verticalCenter: parent.verticalCenter
        name: "search"
        size: 14
        ink: Theme.secondaryInk
    }
    Glyph {
        x: control.width - width - 10
        anchors.verticalCenter: parent.verticalCenter
        visible: control.length > 0
        name: "close"
        size: 12
        ink: Theme.secondaryInk
        TapHandler { onTapped: control.clear() }
    }
}
