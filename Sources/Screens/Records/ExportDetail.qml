import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Velloran

/// One delivered export, and which of its days are not what they were.
Panel {
    id: panel

    required property ExportHistoryModel history
    readonly property var detail: history.detail
    readonly property bool hasExport: detail.exportID !== undefined
    signal dayOpened(string dayID)
    signal documentAsked()

    Words {
        anchors.centerIn: parent
        width: parent.width - 2 * Theme.margin
        visible: !panel.hasExport
        text: qsTr("Select an export to see what changed since.")
        color: Theme.secondaryInk
        horizontalAlignment: Text.AlignHCenter
        wrapMode: Text.WordWrap
    }
    ColumnLayout {
        anchors.fill: parent
        anchors.margins: Theme.padding
        visible: panel.hasExport
        spacing: Theme.gap

        Words {
            Layout.fillWidth: true
            text: panel.detail.period ?? ""
            font.pixelSize: Theme.heading
            font.weight: Font.DemiBold
            wrapMode: Text.WordWrap
            Accessible.role: Accessible.Heading
            Accessible.name: text
        }
        Repeater {
            model: [panel.detail.whose ?? "", qsTr("%1, %2").arg(panel.detail.format ?? "").arg(panel.detail.when ?? ""),
                    qsTr("%1  ·  %2 billed  ·  %3").arg(panel.detail.days ?? "").arg(panel.detail.billed ?? "").arg(panel.detail.amount ?? "")]
            Words {
                required property string modelData
                Layout.fillWidth: true
                text: modelData
                color: Theme.secondaryInk
                wrapMode: Text.WordWrap
            }
        }
        Rectangle {
            Layout.fillWidth: true
            Layout.topMargin: Theme.unit
            implicitHeight: 1
            color: Theme.border
        }
        Words {
            Layout.fillWidth: true
            text: (panel.detail.changedCount ?? 0) > 0 ? qsTr("Changed since export") : qsTr("Nothing changed since.")
            font.weight: (panel.detail.changedCount ?? 0) > 0 ? Font.DemiBold : Font.Normal
            color: (panel.detail.changedCount ?? 0) > 0 ? Theme.danger : Theme.secondaryInk
        }
        ListView {
            Layout.fillWidth: true
            Layout.fillHeight: true
            clip: true
            spacing: Theme.unit
            model: panel.history.changedDays
            boundsBehavior: Flickable.StopAtBounds
            T.ScrollBar.vertical: ScrollEdge { }
            Accessible.role: Accessible.List
            Accessible.name: qsTr("Changed days")
            delegate: RowLayout {
                id: day
                required property string dayID
                required property string title
                width: ListView.view.width - 12
                height: 34
                spacing: Theme.gap
                Accessible.role: Accessible.ListItem
                Accessible.name: title
                Words {
                    Layout.fillWidth: true
                    text: day.title
                    Accessible.ignored: true
                }
                ActionButton {
                    implicitHeight: 28
                    text: qsTr("Review")
                    Accessible.name: qsTr("Review %1").arg(day.title)
                    onClicked: panel.dayOpened(day.dayID)
                }
            }
        }
        ActionButton {
            Layout.fillWidth: true
            text: qsTr("Open Document")
            onClicked: panel.documentAsked()
        }
    }
}
