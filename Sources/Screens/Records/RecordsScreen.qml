import QtQuick
import QtQuick.Layouts
import Velloran

/// What was worked on which days, what it amounts to, and how far its billing has come.
FocusScope {
    id: screen

    required property RecordsModel records
    property bool showsExports: false
    signal dayOpened(string dayID)

    focus: true
    readonly property bool looksAtExports: visible && showsExports
    onLooksAtExportsChanged: screen.records.history.setVisible(looksAtExports)
    onVisibleChanged: screen.records.setVisible(visible)
    Component.onCompleted: screen.records.setVisible(visible)

    function beginExport() {
        records.exporting.begin(records.filter);
        exportSheet.open();
    }
    Shortcut {
        sequence: "Ctrl+E"
        enabled: screen.visible && !exportSheet.opened && !documentSheet.opened
        onActivated: screen.beginExport()
    }

    ColumnLayout {
        anchors.fill: parent
        anchors.margins: Theme.margin
        spacing: Theme.padding

        RowLayout {
            Layout.fillWidth: true
            spacing: Theme.gap
            ColumnLayout {
                Layout.fillWidth: true
                spacing: 2
                Words {
                    Layout.fillWidth: true
                    text: qsTr("Records")
                    font.pixelSize: Theme.display
                    font.weight: Font.DemiBold
                    Accessible.role: Accessible.Heading
                    Accessible.name: text
                }
                Words {
                    Layout.fillWidth: true
                    text: screen.showsExports ? qsTr("What was delivered, as it was") : screen.records.figures
                    color: Theme.secondaryInk
                }
            }
            SegmentedChoice {
                name: qsTr("Days or exports")
                choices: [{ "key": "days", "name": qsTr("Days") }, { "key": "exports", "name": qsTr("Exports") }]
                chosen: screen.showsExports ? "exports" : "days"
                onChose: (key) => screen.showsExports = key === "exports"
            }
            ActionButton {
                isPrimary: true
                text: qsTr("Export…")
                onClicked: screen.beginExport()
            }
        }
        RecordsFilters {
            Layout.fillWidth: true
            visible: !screen.showsExports
            filter: screen.records.filter
        }
        Notice {
            Layout.fillWidth: true
            visible: text.length > 0
            text: screen.showsExports ? screen.records.history.problem : screen.records.problem
            onDismissed: screen.showsExports ? screen.records.history.dismissProblem() : screen.records.dismissProblem()
        }
        RowLayout {
            Layout.fillWidth: true
            Layout.fillHeight: true
            visible: !screen.showsExports
            spacing: Theme.padding
            RecordsList {
                Layout.fillWidth: true
                Layout.fillHeight: true
                records: screen.records
                onDayOpened: (dayID) => screen.dayOpened(dayID)
            }
            RecordsDetail {
                Layout.preferredWidth: screen.width < 800 ? 264 : 340
                Layout.fillHeight: true
                records: screen.records
                onDayOpened: (dayID) => screen.dayOpened(dayID)
            }
        }
        RowLayout {
            Layout.fillWidth: true
            Layout.fillHeight: true
            visible: screen.showsExports
            spacing: Theme.padding
            ExportHistory {
                Layout.fillWidth: true
                Layout.fillHeight: true
                history: screen.records.history
                onDocumentAsked: documentSheet.open()
            }
            ExportDetail {
                Layout.preferredWidth: screen.width < 800 ? 264 : 340
                Layout.fillHeight: true
                history: screen.records.history
                onDayOpened: (dayID) => screen.dayOpened(dayID)
                onDocumentAsked: documentSheet.open()
            }
        }
    }
    ExportSheet {
        id: exportSheet
        exporting: screen.records.exporting
        onDayOpened: (dayID) => screen.dayOpened(dayID)
    }
    ExportedDocumentSheet {
        id: documentSheet
        history: screen.records.history
    }
}
