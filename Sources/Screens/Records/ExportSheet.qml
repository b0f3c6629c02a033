import QtQuick
import QtQuick.Layouts
import Velloran

/// An export: what it holds on one side, the document as it will be on the other, and what came of it.
Sheet {
    id: sheet

    required property ExportModel exporting
    readonly property bool isOver: exporting.step === "complete" || exporting.step === "failed"
    signal dayOpened(string dayID)

    title: isOver ? "" : qsTr("Export")
    width: isOver ? Math.min(460, parent.width - 2 * Theme.margin) : Math.min(1120, parent.width - 2 * Theme.margin)
    height: isOver ? Math.min(implicitContentHeight + topPadding + bottomPadding, parent.height - 2 * Theme.margin)
                   : Math.min(1280, parent.height - 2 * Theme.margin)
    // Where it goes, and what comes of it, is to be told here.
    asksToLeave: exporting.isDelivering
    onClosed: exporting.end()

    ExportResult {
        Layout.fillWidth: true
        visible: sheet.isOver
        exporting: sheet.exporting
    }
    Notice {
        Layout.fillWidth: true
        visible: !sheet.isOver && sheet.exporting.notice.length > 0
        text: sheet.exporting.notice
        onDismissed: sheet.exporting.dismissNotice()
    }
    RowLayout {
        Layout.fillWidth: true
        Layout.fillHeight: true
        visible: !sheet.isOver
        spacing: Theme.padding

        ExportChoices {
            Layout.preferredWidth: 248
            Layout.fillHeight: true
            enabled: !sheet.exporting.isDelivering
            exporting: sheet.exporting
        }
        ColumnLayout {
            Layout.fillWidth: true
            Layout.fillHeight: true
            spacing: Theme.gap
            Words {
                Layout.fillWidth: true
                visible: text.length > 0
                text: sheet.exporting.figures
                font.weight: Font.DemiBold
            }
            Item {
                Layout.fillWidth: true
                Layout.fillHeight: true
                DocumentPane {
                    anchors.fill: parent
                    visible: sheet.exporting.block.length === 0
                    opacity: sheet.exporting.isBusy ? 0.55 : 1
                    document: sheet.exporting.document
                }
                Panel {
                    anchors.fill: parent
                    visible: sheet.exporting.block.length > 0
                    EmptyState {
                        anchors.centerIn: parent
                        glyph: "export"
                        heading: sheet.exporting.block
                    }
                }
            }
            Words {
                Layout.fillWidth: true
                visible: text.length > 0
                text: sheet.exporting.unreviewed
                font.pixelSize: Theme.small
                color: Theme.warning
                wrapMode: Text.WordWrap
            }
            BlockedDays {
                Layout.fillWidth: true
                visible: sheet.exporting.blockedHeading.length > 0
                heading: sheet.exporting.blockedHeading
                model: sheet.exporting.blockedDays
                onDayOpened: (dayID) => {
                    sheet.close();
                    sheet.dayOpened(dayID);
                }
            }
        }
    }
    actions: [
        Item { Layout.fillWidth: true },
        ActionButton {
            visible: !sheet.isOver
            text: qsTr("Cancel")
            enabled: !sheet.exporting.isDelivering
            onClicked: sheet.close()
        },
        ActionButton {
            visible: !sheet.isOver
            isPrimary: true
            enabled: sheet.exporting.canDeliver
            text: sheet.exporting.kind === "copySummary" ? qsTr("Copy Summary") : qsTr("Save…")
            onClicked: sheet.exporting.deliver()
        },
        ActionButton {
            visible: sheet.exporting.step === "failed"
            text: qsTr("Back to the Preview")
            onClicked: sheet.exporting.backToPreview()
        },
        ActionButton {
            visible: sheet.exporting.step === "complete" && sheet.exporting.deliveredFile.length > 0
            text: qsTr("Show in Folder")
            onClicked: sheet.exporting.showInFolder()
        },
        ActionButton {
            visible: sheet.exporting.step === "complete" && sheet.exporting.deliveredFile.length > 0
            text: qsTr("Open")
            onClicked: sheet.exporting.openFile()
        },
        ActionButton {
            visible: sheet.isOver
            isPrimary: sheet.exporting.step === "complete"
            text: qsTr("Done")
            onClicked: sheet.close()
        }
    ]
}
