import QtQuick
import QtQuick.Layouts
import Velloran

/// For how long observed activity is kept, and whether what is older goes by itself.
ColumnLayout {
    id: rows

    required property HistorySettings history

    spacing: Theme.padding

    SettingRow {
        label: qsTr("Keep history")
        help: qsTr("Observed activity that is older is removed. Reviewed work, day approvals and exported records stay.")
        complaint: rows.history.windowProblem
        ChoiceBox {
            id: choice
            implicitWidth: 160
            enabled: !rows.history.isDeleting
            model: rows.history.windows
            currentIndex: rows.history.window
            Accessible.name: qsTr("Keep history")
            onActivated: (index) => {
                currentIndex = Qt.binding(() => rows.history.window);
                rows.history.chooseWindow(index);
            }
        }
    }
    ToggleRow {
        label: qsTr("Automatic cleanup")
        help: qsTr("Older activity is deleted automatically.") + " " + rows.history.lastCleanup
        isOn: rows.history.cleansAutomatically
        onTurned: (isOn) => rows.history.setCleansAutomatically(isOn)
    }
    ConfirmSheet {
        id: confirmation
        title: rows.history.changeTitle
        text: rows.history.changeText
        confirmText: qsTr("Remove")
        onConfirmed: rows.history.confirmChange()
        onClosed: rows.history.cancelChange()
    }
    Connections {
        target: rows.history
        function onChangeProposed() { confirmation.open(); }
    }
}
