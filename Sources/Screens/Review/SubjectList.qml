import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Velloran

/// The day's blocks and items, one below the other.
Panel {
    id: panel

    required property ReviewModel review
    function focusSearch() {
        search.forceActiveFocus(Qt.ShortcutFocusReason);
        search.selectAll();
    }

    ColumnLayout {
        anchors.fill: parent
        anchors.margins: Theme.gap
        spacing: Theme.gap

        RowLayout {
            Layout.fillWidth: true
            spacing: Theme.gap
            SearchField {
                id: search
                Layout.fillWidth: true
                placeholderText: qsTr("Search this day")
                onTextChanged: panel.review.search = text
                Keys.onDownPressed: list.forceActiveFocus(Qt.TabFocusReason)
            }
            Tick {
                text: qsTr("Unresolved")
                checked: panel.review.onlyUnresolved
                onToggled: panel.review.onlyUnresolved = checked
            }
            SegmentedChoice {
                name: qsTr("Order")
                choices: [{ "key": "time", "name": qsTr("Time") }, { "key": "duration", "name": qsTr("Length") }, { "key": "client", "name": qsTr("Client") }]
                chosen: panel.review.order
                onChose: (key) => panel.review.order = key
            }
        }
        ListView {
            id: list
            Layout.fillWidth: true
            Layout.fillHeight: true
            clip: true
            focus: true
            model: panel.review.subjects
            activeFocusOnTab: true
            keyNavigationEnabled: false
            boundsBehavior: Flickable.StopAtBounds
            Accessible.role: Accessible.List
            Accessible.name: qsTr("Work of the day")
            Keys.onUpPressed: (event) => panel.review.selectNeighbour(-1, event.modifiers & Qt.ShiftModifier)
            Keys.onDownPressed: (event) => panel.review.selectNeighbour(1, event.modifiers & Qt.ShiftModifier)
            Keys.onPressed: (event) => {
                const page = Math.max(1, Math.floor(height / 54) - 1);
                if (event.key === Qt.Key_PageUp)
                    panel.review.selectNeighbour(-page);
                else if (event.key === Qt.Key_PageDown)
                    panel.review.selectNeighbour(page);
                else if (event.key === Qt.Key_Home)
                    panel.review.selectNeighbour(-count);
                else if (event.key === Qt.Key_End)
                    panel.review.selectNeighbour(count);
                else
                    return;
                event.accepted = true;
            }
            T.ScrollBar.vertical: ScrollEdge { }
            property int currentRow: -1
            onCurrentRowChanged: later.restart()
            function showCurrent() {
                if (currentRow >= 0)
                    positionViewAtIndex(currentRow, ListView.Contain);
            }
            // Not with every reading, or nobody could look elsewhere while work is recorded.
            property string day: panel.review.title
            onDayChanged: positionViewAtBeginning()
            Connections {
                target: panel.review
                function onSelectionChanged() { list.currentRow = panel.review.currentRow(); }
            }
            // Rows may be on the move.
            Timer {
                id: later
                interval: 0
                onTriggered: list.showCurrent()
            }
            delegate: SubjectListRow {
                width: list.width
                view: list
                review: panel.review
            }
            FocusRing {
                anchors.margins: 0
                isShown: list.activeFocus && panel.review.current.length === 0
            }
        }
    }
    EmptyState {
        anchors.centerIn: parent
        visible: list.count === 0 && panel.review.isRead
        text: panel.review.hasWork ? qsTr("No work of this day fits the search.") : qsTr("Nothing was recorded on this day.")
    }
}
