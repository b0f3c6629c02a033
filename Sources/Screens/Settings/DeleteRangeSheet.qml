import QtQuick
import QtQuick.Layouts
import Velloran

/// Which days are to be deleted, then the question whether they really are.
Sheet {
    id: sheet

    required property HistorySettings history
    readonly property string scope: history.scopeOfRange(from.date, through.date)

    title: qsTr("Delete History")
    onOpened: {
        from.clear();
        through.clear();
        from.forceActiveFocus();
    }

    Words {
        Layout.fillWidth: true
        text: qsTr("Retained activity history within the selected range.")
        color: Theme.secondaryInk
        wrapMode: Text.WordWrap
    }
    RowLayout {
        Layout.fillWidth: true
        spacing: Theme.padding
        FormRow {
            label: qsTr("First day")
            DateField {
                id: from
                Accessible.name: qsTr("First day")
            }
        }
        FormRow {
            label: qsTr("Last day")
            DateField {
                id: through
                Accessible.name: qsTr("Last day")
            }
        }
        Item { Layout.fillWidth: true }
    }
    Words {
        Layout.fillWidth: true
        text: sheet.scope.length > 0 ? sheet.scope : qsTr("Choose a date range first.")
        font.weight: Font.Medium
        wrapMode: Text.WordWrap
    }
    Words {
        Layout.fillWidth: true
        visible: sheet.scope.length > 0
        text: qsTr("Review the exact scope before continuing.")
        color: Theme.secondaryInk
        wrapMode: Text.WordWrap
    }
    ConfirmSheet {
        id: confirmation
        property string firstDay
        property string lastDay
        confirmText: qsTr("Confirm deletion")
        onConfirmed: {
            sheet.close();
            sheet.history.deleteRange(firstDay, lastDay);
        }
    }
    actions: [
        Item { Layout.fillWidth: true },
        ActionButton {
            text: qsTr("Cancel")
            onClicked: sheet.close()
        },
        ActionButton {
            isDestructive: true
            enabled: sheet.scope.length > 0
            text: qsTr("Continue…")
            onClicked: {
                const words = sheet.history.confirmationOfRange(from.date, through.date);
                confirmation.title = words[0];
                confirmation.text = words[1];
                confirmation.scope = sheet.scope;
                confirmation.firstDay = from.date;
                confirmation.lastDay = through.date;
                confirmation.open();
            }
        }
    ]
}
