import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Velloran

/// A dialog over its window: a title, a content, and buttons that stand in `actions`.
T.Popup {
    id: sheet

    property string title
    default property alias content: body.data
    property alias actions: buttons.data
    property alias contentSpacing: body.spacing
    /// Escape only asks to leave, for there is something to lose.
    property bool asksToLeave: false
    signal leaving()

    parent: T.Overlay.overlay
    x: Math.round((parent.width - width) / 2)
    y: Math.round((parent.height - height) / 2)
    width: Math.min(460, parent.width - 2 * Theme.margin)
    height: Math.min(implicitContentHeight + topPadding + bottomPadding, parent.height - 2 * Theme.margin)
    modal: true
    focus: true
    padding: Theme.margin
    closePolicy: asksToLeave ? T.Popup.NoAutoClose : T.Popup.CloseOnEscape
    T.Overlay.modal: Rectangle { color: Theme.shade }

    background: Rectangle {
        color: Theme.panel
        radius: 10
        border.color: Theme.strongBorder
    }
    contentItem: ColumnLayout {
        spacing: Theme.padding
        Accessible.role: Accessible.Dialog
        Accessible.name: sheet.title
        Keys.onEscapePressed: (event) => {
            event.accepted = sheet.asksToLeave;
            if (sheet.asksToLeave)
                sheet.leaving();
        }
        Words {
            Layout.fillWidth: true
            visible: text.length > 0
            text: sheet.title
            font.pixelSize: Theme.heading
            font.weight: Font.DemiBold
            wrapMode: Text.WordWrap
            Accessible.role: Accessible.Heading
            Accessible.name: text
        }
        ColumnLayout {
            id: body
            Layout.fillWidth: true
            Layout.fillHeight: true
            spacing: Theme.gap
        }
        RowLayout {
            id: buttons
            Layout.fillWidth: true
            Layout.alignment: Qt.AlignRight
            visible: children.length > 0
            spacing: Theme.gap
        }
    }
}
