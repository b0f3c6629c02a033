import QtQuick
import QtQuick.Templates as T
import Velloran

/// Days by month, the latest first.
Panel {
    id: panel

    required property RecordsModel records
    readonly property bool isWide: width > 520
    signal dayOpened(string dayID)

    function follow() {
        const row = panel.records.rowOf(panel.records.current);
        if (row >= 0)
            list.positionViewAtIndex(row, ListView.Contain);
    }
    function look() {
        if (list.count === 0)
            return;
        const first = list.indexAt(1, list.contentY + 1);
        const last = list.indexAt(1, list.contentY + list.height - 1);
        panel.records.look(Math.max(first, 0), last < 0 ? list.count - 1 : last);
    }

    // Once the rows have their places.
    Timer {
        id: once
        interval: 0
        onTriggered: panel.look()
    }
    RecordFigures {
        id: heading
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: parent.top
        anchors.leftMargin: Theme.gap + 12
        anchors.rightMargin: Theme.gap + 14
        height: 34
        visible: list.count > 0
        isWide: panel.isWide
        tracked: qsTr("Tracked")
        billed: qsTr("Billed")
        amount: qsTr("Amount")
        isHeading: true
    }
    Rectangle {
        anchors.bottom: list.top
        anchors.left: parent.left
        anchors.right: parent.right
        height: 1
        visible: list.count > 0
        color: Theme.border
    }
    ListView {
        id: list
        anchors.fill: parent
        anchors.margins: 1
        anchors.topMargin: heading.height
        leftMargin: Theme.gap
        rightMargin: Theme.gap
        bottomMargin: Theme.gap
        clip: true
        model: panel.records.rows
        focus: true
        activeFocusOnTab: true
        keyNavigationEnabled: false
        boundsBehavior: Flickable.StopAtBounds
        T.ScrollBar.vertical: ScrollEdge { }
        Accessible.role: Accessible.List
        Accessible.name: qsTr("Days")

        onContentYChanged: panel.look()
        onCountChanged: once.restart()
        onHeightChanged: once.restart()
        Keys.onPressed: (event) => {
            const how = event.modifiers & Qt.ShiftModifier ? "extend" : event.modifiers & Qt.ControlModifier ? "keep" : "only";
            const page = Math.max(1, Math.floor(list.height / 44) - 1);
            const steps = ({ [Qt.Key_Up]: -1, [Qt.Key_Down]: 1, [Qt.Key_PageUp]: -page, [Qt.Key_PageDown]: page,
                             [Qt.Key_Home]: -list.count, [Qt.Key_End]: list.count })[event.key];
            event.accepted = true;
            if (steps !== undefined)
                panel.records.step(steps, how);
            else if (event.key === Qt.Key_A && event.modifiers & Qt.ControlModifier)
                panel.records.selectAll();
            else if (event.key === Qt.Key_Space)
                panel.records.select(panel.records.current, event.modifiers & Qt.ControlModifier ? "toggle" : "only");
            else if ((event.key === Qt.Key_Return || event.key === Qt.Key_Enter) && panel.records.current.length > 7)
                panel.dayOpened(panel.records.current);
            else
                event.accepted = false;
            if (steps !== undefined)
                panel.follow();
        }

        delegate: RecordsRow {
            width: ListView.view.width - 2 * Theme.gap
            isWide: panel.isWide
            isCurrent: list.activeFocus && panel.records.current === rowID
            onChose: (how) => {
                list.forceActiveFocus();
                panel.records.select(rowID, how);
            }
            onOpened: panel.dayOpened(rowID)
        }
    }
    EmptyState {
        anchors.centerIn: parent
        visible: panel.records.isKnown && list.count === 0 && !panel.records.isReading
        glyph: "records"
        heading: panel.records.isFiltered ? qsTr("No work of that kind in this period") : qsTr("Nothing was recorded in this period")
        text: panel.records.isFiltered ? qsTr("Look at another period, or at all clients.") : qsTr("Choose another period to see earlier days.")
        actionText: panel.records.filter.period === "all" ? "" : qsTr("Show All Days")
        onActed: panel.records.filter.period = "all"
    }
}
