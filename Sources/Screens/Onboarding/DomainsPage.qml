import QtQuick
import QtQuick.Layouts
import Velloran

OnboardingPage {
    id: page

    required property CaptureSettings capture

    glyph: "search"
    title: qsTr("Domains of web pages")
    text: qsTr("If much of your work happens in a browser, its domains tell one client's site from another's. Only the domain is kept, such as example.com, never the whole address and nothing of private windows.")

    Panel {
        Layout.fillWidth: true
        implicitHeight: rows.implicitHeight + 2 * Theme.padding
        ColumnLayout {
            id: rows
            anchors.fill: parent
            anchors.margins: Theme.padding
            spacing: Theme.padding
            ToggleRow {
                label: qsTr("Record browser domains")
                help: qsTr("Off unless you turn it on.")
                isOn: page.capture.recordsDomains
                onTurned: (isOn) => page.capture.setRecordsDomains(isOn)
            }
            BrowserList {
                Layout.fillWidth: true
                capture: page.capture
            }
        }
    }
}
