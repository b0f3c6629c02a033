import QtQuick
import QtQuick.Templates as T
import Velloran

/// The attribution rules in their order, which drags and Alt with the arrows change. The selected one shows its
/// conflicts and what can be done with it.
FocusScope {
    id: panel

    required property RulesModel rules
    /// Where a dragged rule would stand: before the row of that index.
    property int gap: -1

    function ask(id: string) {
        confirmation.ruleID = id;
        confirmation.open();
    }

    Panel {
        anchors.fill: parent
        ListView {
            id: list
            anchors.fill: parent
            anchors.margins: Theme.gap
            clip: true
            focus: true
            model: panel.rules.rules
            currentIndex: panel.rules.selectedIndex
            highlightMoveDuration: 0
            activeFocusOnTab: true
            keyNavigationEnabled: false
            boundsBehavior: Flickable.StopAtBounds
            spacing: 2
            T.ScrollBar.vertical: ScrollEdge { }
            Accessible.role: Accessible.List
            Accessible.name: qsTr("Rules")
            Keys.onPressed: (event) => {
                const step = event.key === Qt.Key_Up ? -1 : event.key === Qt.Key_Down ? 1 : 0;
                const selected = panel.rules.selected;
                event.accepted = true;
                if (step !== 0 && event.modifiers & Qt.AltModifier)
                    panel.rules.moveSelected(step);
                else if (step !== 0)
                    panel.rules.selectNeighbour(step);
                else if (selected.length === 0)
                    event.accepted = false;
                else if (event.key === Qt.Key_Return || event.key === Qt.Key_Enter)
                    panel.rules.editRule(selected);
                else if (event.key === Qt.Key_Space)
                    list.currentItem.toggle();
                else if (event.key === Qt.Key_Delete)
                    panel.ask(selected);
                else
                    event.accepted = false;
            }
            delegate: RuleDelegate {
                width: ListView.view.width - Theme.gap
                rules: panel.rules
                hasKeyboard: isChosen && list.activeFocus
                isGapAbove: panel.gap === index
                isGapBelow: panel.gap === list.count && index === list.count - 1
                onChosen: {
                    list.forceActiveFocus();
                    panel.rules.selected = ruleID;
                }
                onDragged: (y) => {
                    const place = list.mapFromItem(this, 0, y).y + list.contentY;
                    const over = list.itemAt(1, place);
                    panel.gap = over === null ? (place < 0 ? 0 : list.count)
                                              : over.index + (place > over.y + over.height / 2 ? 1 : 0);
                }
                onDropped: {
                    // Taken out of the list first, it no longer counts before a place below its own.
                    const position = panel.gap > index ? panel.gap : panel.gap + 1;
                    if (panel.gap >= 0 && position !== number)
                        panel.rules.move(ruleID, position);
                    panel.gap = -1;
                }
                onRemovalWanted: panel.ask(ruleID)
            }
        }
    }
    EmptyState {
        anchors.centerIn: parent
        visible: panel.rules.isRead && list.count === 0
        glyph: "rules"
        heading: qsTr("No rules yet")
        text: panel.rules.withoutTarget.length > 0 ? panel.rules.withoutTarget
                                                   : qsTr("A rule assigns matching work to a client and project, so that a correction is made once and not every day.")
        actionText: panel.rules.withoutTarget.length > 0 ? "" : qsTr("Add the First Rule")
        onActed: panel.rules.addRule()
    }
    ConfirmSheet {
        id: confirmation
        property string ruleID
        title: qsTr("Delete this rule?")
        text: qsTr("Work already recorded under it is not affected; work it currently attributes becomes unassigned when the day is next rebuilt.")
        confirmText: qsTr("Delete Rule")
        onConfirmed: panel.rules.remove(ruleID)
    }
}
