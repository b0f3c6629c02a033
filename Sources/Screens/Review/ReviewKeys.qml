import QtQuick
import Velloran

/// Every command of the day by a key. Letters that are typed into a field stay there.
Item {
    id: keys

    required property ReviewModel review
    required property ReviewEdits edits
    required property Inspector inspector
    required property SubjectList list
    required property Timeline timeline
    required property DayHeader header
    required property AddWorkSheet addWork
    required property SplitSheet split
    property bool isEnabled: true

    readonly property var inspected: review.inspected

    component Key: Shortcut {
        /// What its button asks for, too.
        property bool isPossible: true
        enabled: keys.isEnabled && isPossible
    }

    Key { sequences: [StandardKey.Undo]; isPossible: keys.review.undoTitle.length > 0; onActivated: keys.edits.undo() }
    Key { sequences: [StandardKey.Redo]; isPossible: keys.review.redoTitle.length > 0; onActivated: keys.edits.redo() }
    Key { sequences: ["Alt+Left", "["]; onActivated: keys.review.move(-1) }
    Key { sequences: ["Alt+Right", "]"]; onActivated: keys.review.move(1) }
    Key { sequence: "T"; onActivated: keys.review.openToday() }
    Key { sequence: "G"; onActivated: keys.header.openCalendar() }
    Key { sequences: [StandardKey.Find, "/"]; onActivated: keys.list.focusSearch() }
    Key { sequence: "U"; onActivated: keys.review.onlyUnresolved = !keys.review.onlyUnresolved }
    Key { sequence: "N"; onActivated: keys.review.selectNextUnresolved() }
    Key { sequences: [StandardKey.SelectAll]; onActivated: keys.review.selectAll() }
    Key { sequence: "Escape"; onActivated: keys.review.clearSelection() }
    Key { sequence: "C"; isPossible: keys.inspected.canConfirm ?? false; onActivated: keys.edits.confirm() }
    Key { sequence: "A"; isPossible: keys.inspected.canAssign ?? false; onActivated: keys.inspector.openClients() }
    Key { sequence: "P"; isPossible: keys.inspected.canAssign ?? false; onActivated: keys.inspector.openProjects() }
    Key { sequence: "D"; isPossible: keys.inspected.canDescribe ?? false; onActivated: keys.inspector.focusDescription() }
    Key { sequence: "B"; isPossible: keys.inspected.canSetBillable ?? false; onActivated: keys.edits.setBillable(keys.inspected.billable !== Qt.Checked) }
    Key { sequence: "S"; isPossible: keys.inspected.canSplit ?? false; onActivated: keys.split.openHere() }
    Key { sequence: "M"; isPossible: keys.inspected.canMerge ?? false; onActivated: keys.edits.merge() }
    Key { sequences: ["I", StandardKey.Delete]; isPossible: keys.inspected.kind === "work"; onActivated: keys.inspected.isIgnored ? keys.edits.restore() : keys.edits.ignore() }
    Key { sequence: "W"; onActivated: keys.addWork.openEmpty() }
    Key { sequence: "V"; isPossible: keys.inspected.kind === "idle"; onActivated: keys.addWork.openForIdle() }
    Key { sequence: "R"; isPossible: keys.inspected.canMakeRule ?? false; onActivated: keys.inspector.ruleWanted() }
    Key { sequence: "Ctrl+Return"; isPossible: keys.review.canMarkReady; onActivated: keys.edits.markReady() }
    Key { sequences: ["Ctrl++", "Ctrl+=", "+"]; onActivated: keys.timeline.zoomBy(1.5) }
    Key { sequences: ["Ctrl+-", "-"]; onActivated: keys.timeline.zoomBy(1 / 1.5) }
    Key { sequences: ["Ctrl+0", "0"]; onActivated: keys.timeline.showAll() }
}
