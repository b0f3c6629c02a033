import QtQuick
import QtQuick.Layouts
import Velloran

/// What is recorded under a client or project; archiving it, restoring it, and deleting it where nothing is.
ColumnLayout {
    id: end

    property string name
    property string references
    property bool isArchived: false
    property string complaint
    property string archiveText
    property string restoreText
    property string deleteText
    property string question
    property string consequence
    signal archived(bool isArchived)
    signal deleted()

    spacing: Theme.gap
    Words {
        Layout.fillWidth: true
        text: end.references.length > 0 ? qsTr("Used by %1.").arg(end.references) : qsTr("Nothing recorded uses it.")
        wrapMode: Text.WordWrap
        font.pixelSize: Theme.small
        color: Theme.secondaryInk
    }
    Flow {
        Layout.fillWidth: true
        spacing: Theme.gap
        ActionButton {
            text: end.isArchived ? end.restoreText : end.archiveText
            onClicked: end.archived(!end.isArchived)
        }
        ActionButton {
            text: end.deleteText
            isDestructive: true
            // Where something uses it, asking first would ask for nothing: it is refused.
            onClicked: end.references.length > 0 ? end.deleted() : confirmation.open()
        }
    }
    Words {
        Layout.fillWidth: true
        visible: text.length > 0
        text: end.complaint
        font.pixelSize: Theme.small
        wrapMode: Text.WordWrap
        color: Theme.danger
        Accessible.role: Accessible.AlertMessage
        Accessible.name: text
    }
    ConfirmSheet {
        id: confirmation
        title: end.question
        text: end.consequence
        scope: end.name
        onConfirmed: end.deleted()
    }
}
