import QtQuick
import QtQuick.Layouts
import Velloran

/// One day: what was recorded of it, and what it becomes.
FocusScope {
    id: screen

    required property ReviewModel review
    required property ReviewEdits edits
    /// The rule is to be shown where rules are kept.
    signal ruleChosen(string ruleID)
    /// Of the selected work.
    signal ruleWanted(string dayID, string workID)

    focus: true

    ReviewKeys {
        review: screen.review
        edits: screen.edits
        inspector: inspector
        list: list
        timeline: timeline
        header: header
        addWork: addWork
        split: split
        isEnabled: screen.visible && !addWork.visible && !split.visible && !newTarget.visible
    }
    AddWorkSheet {
        id: addWork
        review: screen.review
        edits: screen.edits
        onClosed: inspector.showProjects()
    }
    SplitSheet {
        id: split
        review: screen.review
        edits: screen.edits
    }
    NewTargetSheet {
        id: newTarget
        edits: screen.edits
        onCreated: (clientID, projectID) => screen.edits.assign(clientID, projectID)
    }

    ColumnLayout {
        anchors.fill: parent
        anchors.margins: Theme.margin
        spacing: Theme.isLow ? Theme.gap : Theme.padding

        DayHeader {
            id: header
            Layout.fillWidth: true
            review: screen.review
            edits: screen.edits
        }
        WeekStrip {
            Layout.fillWidth: true
            review: screen.review
        }
        Notice {
            Layout.fillWidth: true
            visible: screen.review.problem.length > 0
            text: screen.review.problem
            onDismissed: screen.review.dismissProblem()
        }
        Timeline {
            id: timeline
            Layout.fillWidth: true
            review: screen.review
            edits: screen.edits
            onWorkMissing: (start, end) => addWork.openFor(start, end)
        }
        RowLayout {
            Layout.fillWidth: true
            Layout.fillHeight: true
            spacing: Theme.padding
            SubjectList {
                id: list
                Layout.fillWidth: true
                Layout.fillHeight: true
                review: screen.review
            }
            Inspector {
                id: inspector
                Layout.preferredWidth: Theme.isNarrow ? 272 : Math.max(304, Math.min(400, screen.width / 5))
                Layout.fillHeight: true
                review: screen.review
                edits: screen.edits
                onNewTargetWanted: (clientID, clientName, projectName) => newTarget.openFor(clientID, clientName, projectName)
                onSplitWanted: split.openHere()
                onConversionWanted: addWork.openForIdle()
                onRuleChosen: (ruleID) => screen.ruleChosen(ruleID)
                onRuleWanted: screen.ruleWanted(screen.review.dayID(), inspector.subject.subjectID)
            }
        }
    }
}
