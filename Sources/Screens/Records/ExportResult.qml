import QtQuick
import QtQuick.Layouts
import Velloran

/// What came of an export.
RowLayout {
    id: result

    required property ExportModel exporting
    readonly property bool isComplete: exporting.step === "complete"

    spacing: Theme.padding
    Glyph {
        Layout.alignment: Qt.AlignTop
        name: result.isComplete ? "check" : "warning"
        size: 24
        ink: result.isComplete ? Theme.good : Theme.danger
    }
    ColumnLayout {
        Layout.fillWidth: true
        spacing: Theme.unit
        Words {
            Layout.fillWidth: true
            text: result.exporting.resultTitle
            font.pixelSize: Theme.heading
            font.weight: Font.DemiBold
            wrapMode: Text.WordWrap
            Accessible.role: Accessible.AlertMessage
            Accessible.name: text
        }
        Words {
            Layout.fillWidth: true
            text: result.exporting.resultText
            color: Theme.secondaryInk
            wrapMode: Text.Wrap
        }
    }
}
