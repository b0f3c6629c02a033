import QtQuick
import QtQuick.Layouts
import Velloran

OnboardingPage {
    id: page

    required property CaptureSettings capture

    glyph: "info"
    title: qsTr("Let Velloran read titles")
    text: qsTr("Your desktop's accessibility tells what the window in front shows. Without it only applications are recorded, which makes it harder to tell one project from another.")

    Panel {
        Layout.fillWidth: true
        implicitHeight: row.implicitHeight + 2 * Theme.padding
        AccessibilityRow {
            id: row
            anchors.fill: parent
            anchors.margins: Theme.padding
            capture: page.capture
        }
    }
    Panel {
        Layout.fillWidth: true
        implicitHeight: titles.implicitHeight + 2 * Theme.padding
        ToggleRow {
            id: titles
            anchors.fill: parent
            anchors.margins: Theme.padding
            label: qsTr("Record window titles")
            help: qsTr("You can change this at any time in Settings.")
            isOn: page.capture.recordsTitles
            onTurned: (isOn) => page.capture.setRecordsTitles(isOn)
        }
    }
}
