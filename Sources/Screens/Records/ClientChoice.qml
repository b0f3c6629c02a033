import QtQuick
import Velloran

/// Whose work is looked at.
FilterChoice {
    id: control

    required property RecordsFilter filter

    model: filter.clients
    chosen: filter.clientID
    Accessible.name: qsTr("Client")
    onChose: (choice) => control.filter.clientID = choice
}
