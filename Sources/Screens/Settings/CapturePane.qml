import QtQuick
import QtQuick.Layouts
import Velloran

SettingsPane {
    id: pane

    required property CaptureSettings capture
    required property ExclusionSettings exclusions

    title: qsTr("Capture")

    SettingsSection {
        title: qsTr("What is recorded beside the application")
        ToggleRow {
            label: qsTr("Window titles")
            help: qsTr("Titles tell documents and projects apart. They never leave this computer by themselves.")
            isOn: pane.capture.recordsTitles
            onTurned: (isOn) => pane.capture.setRecordsTitles(isOn)
        }
        ToggleRow {
            label: qsTr("Browser domains")
            help: qsTr("Only the domain of the page in front, such as example.com: never the whole address, and nothing of private windows.")
            isOn: pane.capture.recordsDomains
            onTurned: (isOn) => pane.capture.setRecordsDomains(isOn)
        }
        BrowserList {
            Layout.fillWidth: true
            capture: pane.capture
        }
    }
    SettingsSection {
        title: qsTr("Accessibility")
        AccessibilityRow { capture: pane.capture }
    }
    ExcludedApplications {
        Layout.fillWidth: true
        exclusions: pane.exclusions
    }
}
