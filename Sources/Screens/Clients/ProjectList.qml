import QtQuick
import QtQuick.Layouts
import Velloran

/// The selected client's projects, of which one is open for edits, and the field for a new one.
ColumnLayout {
    id: list

    required property ClientsModel clients
    readonly property var complaints: clients.complaints
    property bool canAdd: true
    property string subject
    property string opened

    onSubjectChanged: {
        opened = "";
        adder.end();
    }

    spacing: Theme.gap
    RowLayout {
        Layout.fillWidth: true
        Words {
            Layout.fillWidth: true
            text: qsTr("Projects")
            font.pixelSize: Theme.heading
            font.weight: Font.DemiBold
            Accessible.role: Accessible.Heading
            Accessible.name: text
        }
        ActionButton {
            text: qsTr("Add Project")
            enabled: list.canAdd
            onClicked: adder.begin()
        }
    }
    EntryField {
        id: adder
        Layout.fillWidth: true
        label: qsTr("Name of the new project")
        complaint: list.complaints.newProject ?? ""
        onEntered: (name) => list.clients.addProject(name)
        onGivenUp: list.clients.dismissComplaint("newProject")
        Connections {
            target: list.clients
            function onProjectAdded(projectID) {
                adder.end();
                list.opened = projectID;
            }
        }
    }
    Words {
        Layout.fillWidth: true
        visible: projects.count === 0 && !adder.visible
        text: qsTr("No projects yet. Work can be assigned to this client once it has one.")
        wrapMode: Text.WordWrap
        color: Theme.secondaryInk
    }
    Repeater {
        id: projects
        model: list.clients.projects
        ProjectRow {
            Layout.fillWidth: true
            clients: list.clients
            isOpen: list.opened === projectID
            onToggled: list.opened = isOpen ? "" : projectID
        }
    }
}
