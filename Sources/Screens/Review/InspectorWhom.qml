import QtQuick
import QtQuick.Layouts
import Velloran

/// For whom the selected work is.
ColumnLayout {
    id: whom

    required property ReviewModel review
    required property ReviewEdits edits
    readonly property var subject: review.inspected
    readonly property bool canAssign: subject.canAssign ?? false
    readonly property string stored: subject.clientID ?? ""
    /// Perhaps chosen just now, but without a project yet.
    property string clientID: stored
    signal newTargetWanted(string clientID, string clientName, string projectName)

    function openClients() {
        client.open();
    }
    function openProjects() {
        if (project.enabled)
            project.open();
        else
            client.open();
    }
    function showStored() {
        clientID = stored;
    }
    function showProjects() {
        review.chooseClient(clientID);
    }
    onStoredChanged: showStored()
    onClientIDChanged: showProjects()
    Connections {
        target: whom.review
        function onSelectionLeft() { whom.showStored(); }
    }

    spacing: Theme.gap
    FormRow {
        Layout.fillWidth: true
        label: qsTr("Client")
        ChoicePicker {
            id: client
            Layout.fillWidth: true
            label: qsTr("Client")
            model: whom.review.clients
            chosenID: whom.clientID
            enabled: whom.canAssign
            placeholder: (whom.subject.count ?? 0) > 1 ? qsTr("Several, or none") : qsTr("Choose a client")
            newText: qsTr("New client “%1”")
            onChose: (id) => {
                whom.clientID = id;
                project.open();
            }
            onCreated: (name) => whom.newTargetWanted("", name, "")
        }
    }
    FormRow {
        Layout.fillWidth: true
        label: qsTr("Project")
        PickerBox {
            id: project
            Layout.fillWidth: true
            label: qsTr("Project")
            model: whom.review.projects
            chosenName: whom.clientID === whom.stored ? whom.subject.project ?? "" : ""
            enabled: whom.clientID.length > 0 && whom.canAssign
            placeholder: qsTr("Choose a project")
            newText: qsTr("New project “%1”")
            onChose: (id) => whom.edits.assign(whom.clientID, id)
            onCreated: (name) => whom.newTargetWanted(whom.clientID, client.chosenName, name)
        }
    }
    Tick {
        Layout.topMargin: Theme.unit
        text: qsTr("Billable")
        checkState: whom.subject.billable ?? Qt.Unchecked
        enabled: whom.subject.canSetBillable ?? false
        onToggled: {
            const wanted = checkState === Qt.Checked;
            checkState = Qt.binding(() => whom.subject.billable ?? Qt.Unchecked);
            whom.edits.setBillable(wanted);
        }
    }
}
