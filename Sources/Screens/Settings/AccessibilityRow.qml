import QtQuick
import Velloran

/// Whether the desktop's accessibility is on, and turning it on.
SettingRow {
    id: row

    required property CaptureSettings capture

    label: capture.hasAccessibility ? qsTr("Accessibility is on") : qsTr("Accessibility")
    help: capture.accessibility + " " + qsTr("Programs that were open before, Chromium and its relatives among them, join when they are started again.")

    Chip {
        visible: row.capture.hasAccessibility
        text: qsTr("On")
        client: Theme.good
    }
    ActionButton {
        visible: row.capture.canAskForAccessibility
        enabled: !row.capture.isAsking
        text: row.capture.isAsking ? qsTr("Turning On…") : qsTr("Turn On Accessibility")
        onClicked: row.capture.askForAccessibility()
    }
}
