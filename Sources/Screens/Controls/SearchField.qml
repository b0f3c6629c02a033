import QtQuick
import Velloran

InputField {
    id: control

    property bool isClearedByEscape: true

    leftPadding: LayoutMirroring.enabled && length > 0 ? 32 : LayoutMirroring.enabled ? 10 : 32
    rightPadding: LayoutMirroring.enabled || length > 0 ? 32 : 10
    Accessible.role: Accessible.EditableText
    Accessible.searchEdit: true
    Accessible.name: placeholderText
    // Before any shortcut of the window.
    Keys.onShortcutOverride: (event) => event.accepted = event.key === Qt.Key_Escape && isClearedByEscape && length > 0
    Keys.onEscapePressed: (event) => {
        event.accepted = isClearedByEscape && length > 0;
        if (event.accepted)
            clear();
    }

    Glyph {
        anchors.left: parent.left
        anchors.leftMargin: 10
        anchors.verticalCenter: parent.verticalCenter
        name: "search"
        size: 14
        ink: Theme.secondaryInk
    }
    Glyph {
        anchors.right: parent.right
        anchors.rightMargin: 10
        anchors.verticalCenter: parent.verticalCenter
        visible: control.length > 0
        name: "close"
        size: 12
        ink: Theme.secondaryInk
        TapHandler { onTapped: control.clear() }
    }
}
