import QtQuick
import Velloran

/// Which project of the client is looked at.
FilterChoice {
    id: control

    required property RecordsFilter filter

    enabled: filter.clientID.length > 0
    model: filter.projects
    chosen: filter.projectID
    Accessible.name: qsTr("Project")
    onChose: (choice) => control.filter.projectID = choice
}
