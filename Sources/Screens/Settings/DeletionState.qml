import QtQuick
import QtQuick.Layouts
import Velloran

/// A deletion that is under way, or what came of it.
ColumnLayout {
    id: state

    required property HistorySettings history

    visible: history.isDeleting || history.outcome.length > 0 || history.deletionProblem.length > 0
    spacing: Theme.gap

    Words {
        visible: state.history.isDeleting
        text: qsTr("Deleting…")
        font.weight: Font.Medium
    }
    ProgressLine {
        Layout.fillWidth: true
        visible: state.history.isDeleting
        value: state.history.progress
        Accessible.name: qsTr("Deleting")
    }
    Notice {
        Layout.fillWidth: true
        visible: !state.history.isDeleting && text.length > 0
        text: state.history.deletionProblem || state.history.outcome
        isGood: state.history.deletionProblem.length === 0
        onDismissed: state.history.dismiss()
    }
}
