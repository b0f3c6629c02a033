import QtQuick
import QtQuick.Layouts
import Velloran

/// Copies of everything, out and in.
ColumnLayout {
    id: rows

    required property DataCopies copies

    spacing: Theme.padding

    SettingRow {
        label: qsTr("Export all data")
        help: qsTr("Everything Velloran holds about you, as one JSON document.")
        ActionButton {
            enabled: !rows.copies.isBusy
            text: qsTr("Export All Data…")
            onClicked: rows.copies.chooseExport()
        }
    }
    SettingRow {
        label: qsTr("Import data")
        help: qsTr("Fills an empty store from such a document.")
        ActionButton {
            enabled: !rows.copies.isBusy
            text: qsTr("Import Data…")
            onClicked: rows.copies.chooseImport()
        }
    }
    RowLayout {
        Layout.fillWidth: true
        visible: rows.copies.isBusy
        spacing: Theme.padding
        Words { text: rows.copies.isCancelling ? qsTr("Cancelling…") : rows.copies.activity }
        ProgressLine {
            Layout.fillWidth: true
            value: rows.copies.progress
            Accessible.name: rows.copies.activity
        }
        ActionButton {
            enabled: !rows.copies.isCancelling
            text: qsTr("Cancel")
            onClicked: rows.copies.cancel()
        }
    }
    Notice {
        Layout.fillWidth: true
        visible: !rows.copies.isBusy && text.length > 0
        text: (rows.copies.outcome + " " + rows.copies.problem).trim()
        isGood: rows.copies.problem.length === 0
        onDismissed: rows.copies.dismiss()
    }
}
