import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Velloran

/// The clients by name, archived ones apart, and above them the field for a new one.
FocusScope {
    id: panel

    required property ClientsModel clients
    readonly property var complaints: clients.complaints

    function beginAdding() {
        adder.begin();
    }

    ClientPalette { id: palette }
    Panel {
        anchors.fill: parent
        ColumnLayout {
            anchors.fill: parent
            anchors.margins: Theme.gap
            spacing: Theme.unit

            EntryField {
                id: adder
                Layout.fillWidth: true
                label: qsTr("Name of the new client")
                complaint: panel.complaints.newClient ?? ""
                onEntered: (name) => panel.clients.addClient(name, palette.nextColor(list.count))
                onGivenUp: {
                    panel.clients.dismissComplaint("newClient");
                    list.forceActiveFocus();
                }
                Connections {
                    target: panel.clients
                    function onClientAdded() {
                        adder.end();
                        list.forceActiveFocus();
                    }
                }
            }
            ListView {
                id: list
                Layout.fillWidth: true
                Layout.fillHeight: true
                clip: true
                focus: true
                model: panel.clients.clients
                currentIndex: panel.clients.selectedIndex
                highlightMoveDuration: 0
                activeFocusOnTab: true
                keyNavigationEnabled: false
                boundsBehavior: Flickable.StopAtBounds
                Accessible.role: Accessible.List
                Accessible.name: qsTr("Clients")
                Keys.onUpPressed: panel.clients.selectNeighbour(-1)
                Keys.onDownPressed: panel.clients.selectNeighbour(1)
                section.property: "isArchived"
                section.delegate: Words {
                    required property string section
                    readonly property bool isShown: section === "true"
                    width: ListView.view.width
                    height: isShown ? 36 : 0
                    visible: isShown
                    leftPadding: 12
                    rightPadding: 12
                    bottomPadding: 6
                    text: qsTr("Archived")
                    font.pixelSize: Theme.small
                    font.weight: Font.DemiBold
                    color: Theme.secondaryInk
                    verticalAlignment: Text.AlignBottom
                }
                delegate: ClientDelegate {
                    width: ListView.view.width - (list.contentHeight > list.height ? Theme.gap : 0)
                    isChosen: panel.clients.selected === clientID
                    hasKeyboard: isChosen && list.activeFocus
                    onChosen: {
                        list.forceActiveFocus();
                        panel.clients.selected = clientID;
                    }
                }
                T.ScrollBar.vertical: ScrollEdge { }
            }
        }
    }
    EmptyState {
        anchors.centerIn: parent
        visible: panel.clients.isRead && list.count === 0 && !adder.visible
        glyph: panel.clients.words.length > 0 ? "search" : "clients"
        heading: panel.clients.words.length > 0 ? qsTr("Nothing found") : qsTr("No clients yet")
        text: panel.clients.words.length > 0 ? qsTr("No client or project has this in its name.")
                                             : qsTr("Work is billed to a client and, under it, to a project.")
        actionText: panel.clients.words.length > 0 ? "" : qsTr("Add the First Client")
        onActed: panel.beginAdding()
    }
}
