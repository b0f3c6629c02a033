import QtQuick
import QtQuick.Layouts
import Velloran

/// Asks before something is done that cannot be taken back.
Sheet {
    id: sheet

    property string text
    /// What exactly is meant.
    property string scope
    property string confirmText: qsTr("Delete")
    property bool isDestructive: true
    signal confirmed()

    Words {
        Layout.fillWidth: true
        text: sheet.text
        wrapMode: Text.WordWrap
        color: Theme.secondaryInk
    }
    Words {
        Layout.fillWidth: true
        visible: text.length > 0
        text: sheet.scope
        wrapMode: Text.WordWrap
        font.weight: Font.Medium
    }
    actions: [
        Item { Layout.fillWidth: true },
        ActionButton {
            text: qsTr("Cancel")
            focus: true
            onClicked: sheet.close()
        },
        ActionButton {
            isPrimary: !sheet.isDestructive
            isDestructive: sheet.isDestructive
            text: sheet.confirmText
            onClicked: {
                // Before it closes: whoever hears of that takes the question for declined.
                sheet.confirmed();
                sheet.close();
            }
        }
    ]
}
