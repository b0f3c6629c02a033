import QtQuick
import QtQuick.Layouts
import Velloran

/// One day: what was recorded of it, and what it becomes.
FocusScope {
    id: screen

    required property ReviewModel review

    Shortcut { sequences: [StandardKey.Undo]; onActivated: screen.review.undo() }
    Shortcut { sequences: [StandardKey.Redo]; onActivated: screen.review.redo() }
    Shortcut { sequence: "Alt+Left"; onActivated: screen.review.move(-1) }
    Shortcut { sequence: "Alt+Right"; onActivated: screen.review.move(1) }

    ColumnLayout {
        anchors.fill: parent
        anchors.margins: Theme.margin
        spacing: Theme.padding

        DayHeader {
            Layout.fillWidth: true
            review: screen.review
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
            Layout.fillWidth: true
            review: screen.review
        }
        RowLayout {
            Layout.fillWidth: true
            Layout.fillHeight: true
            spacing: Theme.padding
            SubjectList {
                Layout.fillWidth: true
                Layout.fillHeight: true
                review: screen.review
                focus: true
            }
            Inspector {
                Layout.preferredWidth: 304
                Layout.fillHeight: true
                review: screen.review
            }
        }
    }
}
