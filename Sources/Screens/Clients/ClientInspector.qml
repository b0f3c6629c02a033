import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Velloran

/// The selected client: its name, colour and billing, its projects, what is recorded under it, and its end.
Panel {
    id: inspector

    required property ClientsModel clients
    readonly property var client: clients.inspected
    readonly property bool hasClient: client.clientID !== undefined
    readonly property string clientID: client.clientID ?? ""
    readonly property var complaints: clients.complaints

    onClientIDChanged: page.contentY = 0

    Flickable {
        id: page
        anchors.fill: parent
        anchors.margins: 1
        visible: inspector.hasClient
        clip: true
        contentWidth: width
        contentHeight: body.implicitHeight + 2 * Theme.margin
        boundsBehavior: Flickable.StopAtBounds
        T.ScrollBar.vertical: ScrollEdge { }

        ColumnLayout {
            id: body
            x: Theme.margin
            y: Theme.margin
            width: Math.min(page.width - 2 * Theme.margin, 680)
            spacing: Theme.padding

            Words {
                Layout.fillWidth: true
                visible: inspector.client.isArchived ?? false
                text: qsTr("Archived. History is kept in Records and on past exports.")
                wrapMode: Text.WordWrap
                color: Theme.secondaryInk
            }
            FormRow {
                Layout.fillWidth: true
                label: qsTr("Name")
                complaint: inspector.complaints.name ?? ""
                StoredField {
                    Layout.fillWidth: true
                    stored: inspector.client.name ?? ""
                    subject: inspector.clientID
                    Accessible.name: qsTr("Client name")
                    onEdited: (text) => inspector.clients.renameClient(inspector.clientID, text)
                    onRestored: inspector.clients.dismissComplaint("name")
                }
            }
            FormRow {
                Layout.fillWidth: true
                label: qsTr("Colour")
                ColorPicker {
                    Layout.fillWidth: true
                    color: inspector.client.clientColor ?? ""
                    subject: inspector.clientID
                    complaint: inspector.complaints.color ?? ""
                    onPicked: (color) => inspector.clients.colorClient(inspector.clientID, color)
                    onRestored: inspector.clients.dismissComplaint("color")
                }
            }
            GridLayout {
                Layout.fillWidth: true
                columns: width > 420 ? 2 : 1
                columnSpacing: Theme.padding
                rowSpacing: Theme.padding
                RateRow {
                    Layout.fillWidth: true
                    Layout.preferredWidth: 1
                    Layout.alignment: Qt.AlignTop
                    clients: inspector.clients
                    stored: inspector.client.rate ?? ""
                    subject: inspector.clientID
                    placeholder: qsTr("No rate")
                    name: qsTr("Client hourly rate")
                    refusal: inspector.complaints.rate ?? ""
                    onEdited: (rate) => inspector.clients.setClientRate(inspector.clientID, rate)
                    onRestored: inspector.clients.dismissComplaint("rate")
                }
                RoundingRow {
                    Layout.fillWidth: true
                    Layout.preferredWidth: 1
                    Layout.alignment: Qt.AlignTop
                    name: qsTr("Client rounding")
                    roundings: inspector.clients.clientRoundings
                    stored: inspector.client.rounding ?? ""
                    complaint: inspector.complaints.rounding ?? ""
                    onChose: (rounding) => inspector.clients.setClientRounding(inspector.clientID, rounding)
                }
            }
            Separator { }
            ProjectList {
                Layout.fillWidth: true
                clients: inspector.clients
                canAdd: !(inspector.client.isArchived ?? false)
                subject: inspector.clientID
            }
            Separator { }
            EndOfEntry {
                Layout.fillWidth: true
                subject: inspector.clientID
                name: inspector.client.name ?? ""
                references: inspector.client.references ?? ""
                isArchived: inspector.client.isArchived ?? false
                complaint: inspector.complaints.remove ?? ""
                archiveText: qsTr("Archive Client")
                restoreText: qsTr("Restore Client")
                deleteText: qsTr("Delete Client…")
                question: qsTr("Delete this client?")
                consequence: qsTr("Its projects and billing go with it. This cannot be taken back.")
                onArchived: (isArchived) => inspector.clients.archiveClient(inspector.clientID, isArchived)
                onDeleted: (id) => inspector.clients.deleteClient(id)
            }
        }
    }
    Words {
        anchors.centerIn: parent
        width: parent.width - 2 * Theme.margin
        visible: !inspector.hasClient && inspector.clients.isRead
        horizontalAlignment: Text.AlignHCenter
        text: qsTr("Select a client to see its projects and what it bills.")
        wrapMode: Text.WordWrap
        color: Theme.secondaryInk
    }
}
