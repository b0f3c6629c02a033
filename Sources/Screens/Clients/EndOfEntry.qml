import QtQuick
import QtQuick.Layouts
import Velloran

/// What is recorded under a client or project; archiving it, restoring it, and deleting it where nothing is.
ColumnLayout {
    id: end

    property string subject
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
    signal deleted(string id)

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
            onClicked: end.references.length > 0 ? end.deleted(end.subject) : confirmation.ask()
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
        /// What was shown when it was asked: another may be by the time of the answer.
        property string subject
        function ask() {
            subject = end.subject;
            scope = end.name;
            open();
        }
        title: end.question
        text: end.consequence
        onConfirmed: end.deleted(subject)
    }
}
