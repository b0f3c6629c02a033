import QtQuick
import QtQuick.Layouts
import Velloran

/// A new project, and its client where that is new too.
Sheet {
    id: sheet

    required property ReviewEdits edits
    property string clientID
    signal created(string clientID, string projectID)
    function openFor(client: string, clientName: string, projectName: string) {
        clientID = client;
        name.text = clientName;
        project.text = projectName;
        complaint.text = "";
        open();
        project.forceActiveFocus();
    }
    function save() {
        edits.createTarget(clientID, name.text, project.text);
    }

    width: 360
    title: clientID.length > 0 ? qsTr("New Project for %1").arg(name.text) : qsTr("New Client and Project")
    Connections {
        target: sheet.edits
        enabled: sheet.visible
        function onTargetCreated(clientID: string, projectID: string) {
            sheet.close();
            sheet.created(clientID, projectID);
        }
        function onTargetRefused(sentence: string) { complaint.text = sentence; }
    }
    FormRow {
        Layout.fillWidth: true
        visible: sheet.clientID.length === 0
        label: qsTr("Client")
        InputField {
            id: name
            Layout.fillWidth: true
            Accessible.name: qsTr("Client")
            onAccepted: sheet.save()
        }
    }
    FormRow {
        Layout.fillWidth: true
        label: qsTr("Project")
        InputField {
            id: project
            Layout.fillWidth: true
            Accessible.name: qsTr("Project")
            onAccepted: sheet.save()
        }
    }
    Words {
        id: complaint
        Layout.fillWidth: true
        visible: text.length > 0
        color: Theme.danger
        wrapMode: Text.WordWrap
        Accessible.role: Accessible.AlertMessage
        Accessible.name: text
    }
    actions: [
        Item { Layout.fillWidth: true },
        ActionButton {
            text: qsTr("Cancel")
            onClicked: sheet.close()
        },
        ActionButton {
            isPrimary: true
            text: qsTr("Add")
            onClicked: sheet.save()
        }
    ]
}
