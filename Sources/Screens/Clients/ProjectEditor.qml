import QtQuick
import QtQuick.Layouts
import Velloran

/// All that can be set of a project. What it does not say itself is its client's.
ColumnLayout {
    id: editor

    /// The row that it belongs to.
    required property var project
    readonly property ClientsModel clients: project.clients
    readonly property string projectID: project.projectID

    function complaint(field: string): string {
        return project.complaints[projectID + "." + field] ?? "";
    }

    function dismiss(field: string) {
        clients.dismissComplaint(projectID + "." + field);
    }

    spacing: Theme.padding
    Words {
        Layout.fillWidth: true
        visible: editor.project.isArchived
        text: qsTr("Archived. History is kept in Records and on past exports.")
        wrapMode: Text.WordWrap
        color: Theme.secondaryInk
    }
    FormRow {
        Layout.fillWidth: true
        label: qsTr("Name")
        complaint: editor.complaint("name")
        StoredField {
            Layout.fillWidth: true
            stored: editor.project.name
            subject: editor.projectID
            Accessible.name: qsTr("Project name")
            onEdited: (text) => editor.clients.renameProject(editor.projectID, text)
            onRestored: editor.dismiss("name")
        }
    }
    GridLayout {
        Layout.fillWidth: true
        columns: width > 380 ? 2 : 1
        columnSpacing: Theme.padding
        rowSpacing: Theme.padding
        RateRow {
            Layout.fillWidth: true
            Layout.preferredWidth: 1
            Layout.alignment: Qt.AlignTop
            clients: editor.clients
            stored: editor.project.rate
            subject: editor.projectID
            placeholder: qsTr("Same as client")
            name: qsTr("Project hourly rate")
            refusal: editor.complaint("rate")
            onEdited: (rate) => editor.clients.setProjectRate(editor.projectID, rate)
            onRestored: editor.dismiss("rate")
        }
        RoundingRow {
            Layout.fillWidth: true
            Layout.preferredWidth: 1
            Layout.alignment: Qt.AlignTop
            name: qsTr("Project rounding")
            roundings: editor.clients.projectRoundings
            stored: editor.project.rounding
            complaint: editor.complaint("rounding")
            onChose: (rounding) => editor.clients.setProjectRounding(editor.projectID, rounding)
        }
    }
    Toggle {
        text: qsTr("Billable unless a rule or a review says otherwise")
        checked: editor.project.isBillable
        onToggled: {
            editor.clients.setProjectBillable(editor.projectID, checked);
            checked = Qt.binding(() => editor.project.isBillable);
        }
    }
    EndOfEntry {
        Layout.fillWidth: true
        subject: editor.projectID
        name: editor.project.name
        references: editor.project.references
        isArchived: editor.project.isArchived
        complaint: editor.complaint("remove")
        archiveText: qsTr("Archive Project")
        restoreText: qsTr("Restore Project")
        deleteText: qsTr("Delete Project…")
        question: qsTr("Delete this project?")
        consequence: qsTr("This cannot be taken back.")
        onArchived: (isArchived) => editor.clients.archiveProject(editor.projectID, isArchived)
        onDeleted: (id) => editor.clients.deleteProject(id)
    }
}
