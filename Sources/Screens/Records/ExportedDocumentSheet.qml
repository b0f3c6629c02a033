import QtQuick
import QtQuick.Layouts
import Velloran

/// A delivered export as the document it was.
Sheet {
    id: sheet

    required property ExportHistoryModel history
    readonly property var detail: history.detail
    readonly property bool isSummary: history.document.kind === "text"

    title: detail.period ?? ""
    width: Math.min(900, parent.width - 2 * Theme.margin)
    height: parent.height - 2 * Theme.margin
    onAboutToShow: history.openDocument()
    onClosed: history.closeDocument()

    Words {
        Layout.fillWidth: true
        text: qsTr("%1, %2").arg(sheet.detail.format ?? "").arg(sheet.detail.when ?? "")
        color: Theme.secondaryInk
    }
    Notice {
        Layout.fillWidth: true
        visible: sheet.history.notice.length > 0
        text: sheet.history.notice
        onDismissed: sheet.history.dismissNotice()
    }
    DocumentPane {
        Layout.fillWidth: true
        Layout.fillHeight: true
        document: sheet.history.document
    }
    actions: [
        Item { Layout.fillWidth: true },
        ActionButton {
            text: sheet.isSummary ? qsTr("Copy Again") : qsTr("Save Again…")
            enabled: sheet.history.document.kind.length > 0
            onClicked: sheet.history.deliverAgain()
        },
        ActionButton {
            isPrimary: true
            text: qsTr("Done")
            onClicked: sheet.close()
        }
    ]
}
