import QtQuick
import QtQuick.Layouts
import Velloran

/// What its user deletes for good.
ColumnLayout {
    id: rows

    required property HistorySettings history

    spacing: Theme.padding

    SettingRow {
        label: qsTr("Delete a range")
        help: qsTr("Delete a date range.")
        ActionButton {
            enabled: !rows.history.isDeleting
            isDestructive: true
            text: qsTr("Delete History…")
            onClicked: range.open()
        }
    }
    SettingRow {
        label: qsTr("Delete everything")
        help: qsTr("Removes every recorded day. This cannot be undone.")
        ActionButton {
            enabled: !rows.history.isDeleting
            isDestructive: true
            text: qsTr("Delete All Activity Data…")
            onClicked: all.open()
        }
    }
    DeleteRangeSheet {
        id: range
        history: rows.history
    }
    ConfirmSheet {
        id: all
        readonly property var words: rows.history.confirmationOfAll()
        title: words[0] ?? ""
        text: words[1] ?? ""
        confirmText: qsTr("Delete All Activity Data")
        onConfirmed: rows.history.deleteAll()
    }
}
