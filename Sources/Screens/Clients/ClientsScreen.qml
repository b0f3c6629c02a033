import QtQuick
import QtQuick.Layouts
import Velloran

/// Whom work is for, and what it bills.
FocusScope {
    id: screen

    required property ClientsModel clients

    focus: true
    Binding {
        target: screen.clients
        property: "isShown"
        value: screen.visible
    }
    Shortcut {
        enabled: screen.visible
        sequences: [StandardKey.New]
        onActivated: list.beginAdding()
    }
    Shortcut {
        enabled: screen.visible
        sequences: [StandardKey.Find]
        onActivated: search.forceActiveFocus(Qt.ShortcutFocusReason)
    }

    ColumnLayout {
        anchors.fill: parent
        anchors.margins: Theme.margin
        spacing: Theme.padding

        RowLayout {
            Layout.fillWidth: true
            spacing: Theme.gap
            ColumnLayout {
                Layout.fillWidth: true
                spacing: Theme.unit
                Words {
                    Layout.fillWidth: true
                    text: qsTr("Clients")
                    font.pixelSize: Theme.display
                    font.weight: Font.DemiBold
                    Accessible.role: Accessible.Heading
                    Accessible.name: text
                }
                Words {
                    Layout.fillWidth: true
                    text: screen.clients.summary
                    color: Theme.secondaryInk
                }
            }
            SearchField {
                id: search
                Layout.preferredWidth: 220
                placeholderText: qsTr("Search clients and projects")
                text: screen.clients.words
                onTextEdited: screen.clients.words = text
                onTextChanged: if (text.length === 0) screen.clients.words = ""
                Keys.onDownPressed: list.forceActiveFocus(Qt.TabFocusReason)
            }
            ActionButton {
                text: qsTr("Add Client")
                isPrimary: true
                onClicked: list.beginAdding()
            }
        }
        Notice {
            Layout.fillWidth: true
            visible: screen.clients.problem.length > 0
            text: screen.clients.problem
            onDismissed: screen.clients.dismissProblem()
        }
        RowLayout {
            Layout.fillWidth: true
            Layout.fillHeight: true
            spacing: Theme.padding
            ClientList {
                id: list
                Layout.preferredWidth: Math.min(300, screen.width * 0.36)
                Layout.fillHeight: true
                clients: screen.clients
                focus: true
            }
            ClientInspector {
                Layout.fillWidth: true
                Layout.fillHeight: true
                clients: screen.clients
            }
        }
    }
}
