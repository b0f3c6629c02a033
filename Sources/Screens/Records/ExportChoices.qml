import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Velloran

/// What an export holds and what it becomes.
Flickable {
    id: choices

    required property ExportModel exporting

    contentHeight: column.implicitHeight
    boundsBehavior: Flickable.StopAtBounds
    clip: true
    T.ScrollBar.vertical: ScrollEdge { }

    ColumnLayout {
        id: column
        x: 3
        y: 3
        width: choices.width - 14
        spacing: Theme.gap + Theme.unit

        FormRow {
            Layout.fillWidth: true
            label: qsTr("Period")
            PeriodChoice {
                Layout.fillWidth: true
                filter: choices.exporting.filter
            }
        }
        DateRangeFields {
            Layout.fillWidth: true
            visible: choices.exporting.filter.period === "custom"
            first: choices.exporting.filter.firstDate
            last: choices.exporting.filter.lastDate
            complaint: choices.exporting.filter.datesComplaint
            onChanged: (first, last) => choices.exporting.filter.setDates(first, last)
        }
        FormRow {
            Layout.fillWidth: true
            label: qsTr("Client and project")
            ColumnLayout {
                Layout.fillWidth: true
                spacing: Theme.gap
                ClientChoice {
                    Layout.fillWidth: true
                    filter: choices.exporting.filter
                }
                ProjectChoice {
                    Layout.fillWidth: true
                    filter: choices.exporting.filter
                }
            }
        }
        FormRow {
            Layout.fillWidth: true
            label: qsTr("Format")
            ChoiceBox {
                id: kind
                readonly property var kinds: [
                    { "choiceID": "pdf", "name": qsTr("Timesheet (PDF)") },
                    { "choiceID": "csv", "name": qsTr("Table (CSV)") },
                    { "choiceID": "copySummary", "name": qsTr("Summary (clipboard)") }
                ]
                Layout.fillWidth: true
                model: kinds
                currentIndex: kinds.findIndex((one) => one.choiceID === choices.exporting.kind)
                Accessible.name: qsTr("Format")
                onActivated: choices.exporting.kind = currentValue
            }
        }
        FormRow {
            Layout.fillWidth: true
            label: qsTr("Rows")
            SegmentedChoice {
                name: qsTr("Rows")
                choices: [{ "key": "summarized", "name": qsTr("Summarized") }, { "key": "detailed", "name": qsTr("Detailed") }]
                chosen: choices.exporting.mode
                onChose: (key) => choices.exporting.mode = key
            }
        }
        FormRow {
            Layout.fillWidth: true
            visible: ticks.count > 0
            label: qsTr("Columns")
            ColumnLayout {
                spacing: 2
                Repeater {
                    id: ticks
                    model: choices.exporting.fields
                    Tick {
                        required property string token
                        required property string name
                        required property bool isOn
                        text: name
                        checked: isOn
                        onToggled: choices.exporting.setField(token, checked)
                    }
                }
            }
        }
        ColumnLayout {
            Layout.fillWidth: true
            spacing: 2
            Words {
                visible: ticks.count > 0
                text: qsTr("Set by the format:")
                font.pixelSize: Theme.small
                font.weight: Font.Medium
                color: Theme.secondaryInk
            }
            Repeater {
                model: ticks.count > 0 ? choices.exporting.formatNotes : []
                Words {
                    required property string modelData
                    Layout.fillWidth: true
                    text: modelData
                    font.pixelSize: Theme.small
                    color: Theme.secondaryInk
                    wrapMode: Text.WordWrap
                }
            }
        }
        Words {
            Layout.fillWidth: true
            Layout.bottomMargin: Theme.gap
            text: choices.exporting.neverExported
            font.pixelSize: Theme.small
            color: Theme.secondaryInk
            wrapMode: Text.WordWrap
        }
    }
}
