import QtQuick
import QtQuick.Layouts
import Velloran

/// Where to go, and whether work is recorded.
Rectangle {
    id: sidebar

    required property ShellModel shell

    implicitWidth: Theme.isNarrow ? 60 : 208
    color: Theme.panel

    Rectangle {
        anchors.right: parent.right
        width: 1
        height: parent.height
        color: Theme.border
    }
    ColumnLayout {
        anchors.fill: parent
        anchors.margins: 12
        spacing: 2

        Words {
            Layout.margins: 10
            Layout.bottomMargin: Theme.padding
            text: Theme.isNarrow ? " " : Application.displayName
            font.pixelSize: Theme.heading
            font.weight: Font.DemiBold
        }
        Repeater {
            model: [
                { "key": "review", "name": qsTr("Review") },
                { "key": "records", "name": qsTr("Records") },
                { "key": "clients", "name": qsTr("Clients") },
                { "key": "rules", "name": qsTr("Rules") }
            ]
            NavigationItem {
                required property var modelData
                Layout.fillWidth: true
                glyph: modelData.key
                text: modelData.name
                count: modelData.key === "review" ? sidebar.shell.reviewCount : 0
                isChosen: sidebar.shell.page === modelData.key
                onClicked: sidebar.shell.page = modelData.key
            }
        }
        Item { Layout.fillHeight: true }
        CaptureState {
            Layout.fillWidth: true
            Layout.leftMargin: Theme.isNarrow ? 0 : 10
            Layout.bottomMargin: Theme.unit
            shell: sidebar.shell
        }
        NavigationItem {
            Layout.fillWidth: true
            glyph: "settings"
            text: qsTr("Settings")
            onClicked: sidebar.shell.settingsOpen = true
        }
    }
}
