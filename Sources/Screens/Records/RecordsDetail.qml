import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Velloran

/// What is selected: a day with its work, or several days together.
Panel {
    id: panel

    required property RecordsModel records
    readonly property var detail: records.detail
    readonly property bool hasDays: detail.title !== undefined
    readonly property bool isDay: detail.dayID !== undefined
    signal dayOpened(string dayID)

    Words {
        anchors.centerIn: parent
        width: parent.width - 2 * Theme.margin
        visible: !panel.hasDays
        text: qsTr("Select a day to see its work, or several for their totals.")
        color: Theme.secondaryInk
        horizontalAlignment: Text.AlignHCenter
        wrapMode: Text.WordWrap
    }
    ColumnLayout {
        anchors.fill: parent
        anchors.topMargin: Theme.padding
        anchors.bottomMargin: Theme.padding
        visible: panel.hasDays
        spacing: Theme.gap

        Words {
            Layout.fillWidth: true
            Layout.leftMargin: Theme.padding
            Layout.rightMargin: Theme.padding
            text: panel.detail.title ?? ""
            font.pixelSize: Theme.heading
            font.weight: Font.DemiBold
            wrapMode: Text.WordWrap
            Accessible.role: Accessible.Heading
            Accessible.name: text
        }
        RecordState {
            Layout.leftMargin: Theme.padding
            visible: panel.isDay
            stateKey: panel.detail.state ?? ""
            text: panel.detail.stateName ?? ""
        }
        Words {
            Layout.fillWidth: true
            Layout.leftMargin: Theme.padding
            Layout.rightMargin: Theme.padding
            visible: text.length > 0
            text: panel.detail.since ? qsTr("%1 of work was recorded since and is not part of it.").arg(panel.detail.since)
                                     : panel.detail.reason ?? ""
            font.pixelSize: Theme.small
            color: Theme.secondaryInk
            wrapMode: Text.WordWrap
        }
        RowLayout {
            Layout.fillWidth: true
            Layout.leftMargin: Theme.padding
            Layout.rightMargin: Theme.padding
            Layout.topMargin: Theme.unit
            spacing: Theme.padding
            opacity: panel.detail.isRead === false ? 0.45 : 1
            component Figure: ColumnLayout {
                property alias name: nameWords.text
                property alias value: valueWords.text
                spacing: 1
                Words {
                    id: nameWords
                    font.pixelSize: Theme.caption
                    color: Theme.secondaryInk
                }
                Words {
                    id: valueWords
                    Layout.fillWidth: true
                    font.weight: Font.DemiBold
                    wrapMode: Text.WordWrap
                }
            }
            Figure {
                Layout.alignment: Qt.AlignTop
                name: qsTr("Tracked")
                value: panel.detail.tracked ?? ""
            }
            Figure {
                Layout.alignment: Qt.AlignTop
                name: qsTr("Billed")
                value: panel.detail.billed ?? ""
            }
            Figure {
                Layout.alignment: Qt.AlignTop
                Layout.fillWidth: true
                name: qsTr("Amount")
                value: panel.detail.amount ?? ""
            }
        }
        Rectangle {
            Layout.fillWidth: true
            Layout.topMargin: Theme.unit
            implicitHeight: 1
            color: Theme.border
        }
        ListView {
            id: list
            Layout.fillWidth: true
            Layout.fillHeight: true
            clip: true
            model: panel.records.lines
            activeFocusOnTab: true
            keyNavigationEnabled: true
            boundsBehavior: Flickable.StopAtBounds
            T.ScrollBar.vertical: ScrollEdge { }
            Accessible.role: Accessible.List
            Accessible.name: panel.isDay ? qsTr("Work of the day") : qsTr("Clients and projects")
            delegate: RecordsLine {
                width: ListView.view.width
                isCurrent: list.activeFocus && ListView.isCurrentItem
            }
        }
        ActionButton {
            Layout.fillWidth: true
            Layout.leftMargin: Theme.padding
            Layout.rightMargin: Theme.padding
            visible: panel.isDay
            text: qsTr("Open in Review")
            onClicked: panel.dayOpened(panel.detail.dayID)
        }
    }
}
