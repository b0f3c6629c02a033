import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Velloran

/// What was exported, the latest first.
Panel {
    id: panel

    required property ExportHistoryModel history
    signal documentAsked()

    function open() {
        if (history.selected.length > 0)
            documentAsked();
    }

    ListView {
        id: list
        anchors.fill: parent
        anchors.margins: Theme.gap
        clip: true
        model: panel.history.rows
        activeFocusOnTab: true
        keyNavigationEnabled: false
        boundsBehavior: Flickable.StopAtBounds
        T.ScrollBar.vertical: ScrollEdge { }
        Accessible.role: Accessible.List
        Accessible.name: qsTr("Exports")
        Keys.onPressed: (event) => {
            const page = Math.max(1, Math.floor(list.height / 52) - 1);
            const steps = ({ [Qt.Key_Up]: -1, [Qt.Key_Down]: 1, [Qt.Key_PageUp]: -page, [Qt.Key_PageDown]: page,
                             [Qt.Key_Home]: -list.count, [Qt.Key_End]: list.count })[event.key];
            event.accepted = true;
            if (steps !== undefined)
                panel.history.step(steps);
            else if (event.key === Qt.Key_Return || event.key === Qt.Key_Enter)
                panel.open();
            else
                event.accepted = false;
        }
        // Rows may be on the move.
        Timer {
            id: later
            property int row: -1
            interval: 0
            onTriggered: list.positionViewAtIndex(row, ListView.Contain)
        }

        delegate: Item {
            id: row

            required property int index
            required property string exportID
            required property string when
            required property string format
            required property string period
            required property string whose
            required property string billed
            required property string amount
            required property int changedCount
            readonly property bool isChosen: panel.history.selected === exportID
            readonly property string changedText: changedCount === 0 ? "" : changedCount === 1 ? qsTr("1 day changed since") : qsTr("%1 days changed since").arg(changedCount)

            width: ListView.view.width
            height: 52
            Accessible.role: Accessible.ListItem
            readonly property var parts: [format, period, whose, when, billed, amount, changedText]
            Accessible.name: parts.filter((part) => part.length > 0).join(", ")
            onIsChosenChanged: if (isChosen) {
                later.row = index;
                later.restart();
            }
            Accessible.selected: isChosen
            Accessible.onPressAction: panel.history.select(exportID)

            Rectangle {
                anchors.fill: parent
                radius: Theme.radius
                color: row.isChosen ? Theme.selection : hover.hovered ? Theme.hover : "transparent"
                FocusRing {
                    anchors.margins: 1
                    radius: Theme.radius
                    isShown: row.isChosen && list.activeFocus
                }
            }
            HoverHandler { id: hover }
            TapHandler {
                onTapped: {
                    list.forceActiveFocus();
                    panel.history.select(row.exportID);
                }
                onDoubleTapped: panel.open()
            }
            RowLayout {
                anchors.fill: parent
                anchors.leftMargin: 12
                anchors.rightMargin: 14
                spacing: Theme.padding
                ColumnLayout {
                    Layout.fillWidth: true
                    spacing: 1
                    Words {
                        Layout.fillWidth: true
                        text: qsTr("%1  ·  %2").arg(row.period).arg(row.whose)
                        font.weight: Font.Medium
                        Accessible.ignored: true
                    }
                    RowLayout {
                        Layout.fillWidth: true
                        spacing: Theme.gap
                        Words {
                            Layout.maximumWidth: implicitWidth + 1
                            Layout.fillWidth: true
                            text: qsTr("%1, %2").arg(row.format).arg(row.when)
                            font.pixelSize: Theme.small
                            color: Theme.secondaryInk
                            Accessible.ignored: true
                        }
                        RecordState {
                            Layout.fillWidth: true
                            visible: row.changedCount > 0
                            stateKey: "changedSinceExport"
                            text: row.changedText
                        }
                    }
                }
                ColumnLayout {
                    spacing: 1
                    Words {
                        Layout.alignment: Qt.AlignRight
                        text: row.amount
                        Accessible.ignored: true
                    }
                    Words {
                        Layout.alignment: Qt.AlignRight
                        text: row.billed
                        font.pixelSize: Theme.small
                        color: Theme.secondaryInk
                        Accessible.ignored: true
                    }
                }
            }
        }
    }
    EmptyState {
        anchors.centerIn: parent
        visible: panel.history.isKnown && list.count === 0
        glyph: "export"
        heading: qsTr("Nothing was exported yet")
        text: qsTr("Every export is kept here as the document it was.")
    }
}
