import QtQuick
import QtQuick.Layouts
import Velloran

SettingsPane {
    id: pane

    required property HistorySettings history
    required property DataCopies copies
    required property AboutSettings about

    title: qsTr("History and Data")

    DeletionState {
        Layout.fillWidth: true
        history: pane.history
    }
    SettingsSection {
        title: qsTr("Keep history")
        RetentionRows {
            Layout.fillWidth: true
            history: pane.history
        }
    }
    SettingsSection {
        title: qsTr("Copies")
        CopyRows {
            Layout.fillWidth: true
            copies: pane.copies
        }
    }
    SettingsSection {
        title: qsTr("Where your data lies")
        StoreRow { about: pane.about }
    }
    SettingsSection {
        title: qsTr("Delete")
        DeletionRows {
            Layout.fillWidth: true
            history: pane.history
        }
    }
}
