import QtQuick
import QtQuick.Layouts
import Velloran

/// The parts of the settings.
Rectangle {
    id: list

    required property string pane
    signal chose(string pane)

    implicitWidth: 196
    color: Theme.panel
    Accessible.role: Accessible.PageTabList
    Accessible.name: qsTr("Settings")

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
        Repeater {
            model: [
                { "key": "general", "glyph": "settings", "name": qsTr("General") },
                { "key": "capture", "glyph": "eye", "name": qsTr("Capture") },
                { "key": "billing", "glyph": "coins", "name": qsTr("Billing") },
                { "key": "history", "glyph": "clock", "name": qsTr("History and Data") },
                { "key": "about", "glyph": "info", "name": qsTr("About") }
            ]
            NavigationItem {
                required property var modelData
                Layout.fillWidth: true
                isNarrow: false
                glyph: modelData.glyph
                text: modelData.name
                isChosen: list.pane === modelData.key
                onClicked: list.chose(modelData.key)
                Keys.onUpPressed: nextItemInFocusChain(false).forceActiveFocus(Qt.TabFocusReason)
                Keys.onDownPressed: nextItemInFocusChain(true).forceActiveFocus(Qt.TabFocusReason)
            }
        }
        Item { Layout.fillHeight: true }
    }
}
