import QtQuick
import QtQuick.Layouts
import Velloran

/// Whom matching work is for, and whether it is billed.
ColumnLayout {
    id: target

    required property RuleEditor editor

    spacing: Theme.padding
    GridLayout {
        Layout.fillWidth: true
        columns: width > 400 ? 2 : 1
        columnSpacing: Theme.padding
        rowSpacing: Theme.padding
        FormRow {
            Layout.fillWidth: true
            Layout.preferredWidth: 1
            label: qsTr("Client")
            ChoicePicker {
                Layout.fillWidth: true
                model: target.editor.clients
                chosenID: target.editor.clientID
                placeholder: qsTr("Choose a client")
                label: qsTr("Client")
                onChose: (id) => target.editor.clientID = id
            }
        }
        FormRow {
            Layout.fillWidth: true
            Layout.preferredWidth: 1
            label: qsTr("Project")
            ChoicePicker {
                Layout.fillWidth: true
                enabled: target.editor.clientID.length > 0
                model: target.editor.projects
                chosenID: target.editor.projectID
                placeholder: qsTr("Choose a project")
                label: qsTr("Project")
                onChose: (id) => target.editor.projectID = id
            }
        }
    }
    FormRow {
        Layout.fillWidth: true
        label: qsTr("Billable")
        SegmentedChoice {
            name: qsTr("Billable")
            chosen: target.editor.billable
            choices: [
                { "key": "default", "name": qsTr("As the project says") },
                { "key": "yes", "name": qsTr("Billable") },
                { "key": "no", "name": qsTr("Not billable") }
            ]
            onChose: (key) => target.editor.billable = key
        }
        Item { Layout.fillWidth: true }
    }
}
