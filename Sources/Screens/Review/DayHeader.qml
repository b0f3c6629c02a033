import QtQuick
import QtQuick.Layouts
import Velloran

/// Which day it is, its figures, and what can be done with all of it.
ColumnLayout {
    id: header

    required property ReviewModel review
    required property ReviewEdits edits
    function openCalendar() {
        calendar.open();
    }

    spacing: Theme.unit

    RowLayout {
        Layout.fillWidth: true
        spacing: Theme.gap
        Words {
            Layout.fillWidth: true
            text: header.review.title
            font.pixelSize: Theme.isNarrow ? Theme.heading : Theme.display
            font.weight: Font.DemiBold
            Accessible.role: Accessible.Heading
            Accessible.name: text
        }
        IconButton {
            glyph: "undo"
            text: header.review.undoTitle.length > 0 ? qsTr("Undo %1").arg(header.review.undoTitle) : qsTr("Undo")
            enabled: header.review.undoTitle.length > 0
            onClicked: header.edits.undo()
        }
        IconButton {
            glyph: "redo"
            text: header.review.redoTitle.length > 0 ? qsTr("Redo %1").arg(header.review.redoTitle) : qsTr("Redo")
            enabled: header.review.redoTitle.length > 0
            onClicked: header.edits.redo()
        }
        Item { implicitWidth: Theme.gap }
        IconButton {
            glyph: "chevron-left"
            text: qsTr("Previous Day")
            onClicked: header.review.move(-1)
        }
        ActionButton {
            text: qsTr("Today")
            onClicked: header.review.openToday()
        }
        IconButton {
            glyph: "chevron-right"
            text: qsTr("Next Day")
            onClicked: header.review.move(1)
        }
        IconButton {
            glyph: "calendar"
            text: qsTr("Choose a Day")
            onClicked: calendar.open()
            CalendarPopup {
                id: calendar
                review: header.review
            }
        }
        Item { implicitWidth: Theme.gap }
        ActionButton {
            id: ready
            isPrimary: true
            text: header.review.isReady && !header.review.canMarkReady ? qsTr("Ready to Bill") : qsTr("Mark Ready to Bill")
            enabled: header.review.canMarkReady
            onClicked: header.edits.markReady()
            Hint {
                isWanted: ready.hovered
                text: qsTr("Freeze this day's reviewed work and mark it ready")
            }
        }
    }
    // Below the buttons: beside them long words would not find room in a small window.
    Words {
        Layout.fillWidth: true
        wrapMode: Text.Wrap
        text: header.review.figures
        color: Theme.secondaryInk
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }
    Words {
        Layout.fillWidth: true
        visible: text.length > 0
        text: header.review.standing
        color: Theme.good
        font.weight: Font.Medium
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }
    Flow {
        Layout.fillWidth: true
        visible: header.review.blockers.length > 0 && header.review.hasWork
        spacing: Theme.padding
        Repeater {
            model: header.review.blockers
            LinkText {
                required property string modelData
                required property int index
                text: modelData
                color: Theme.warning
                onClicked: header.review.selectBlocker(index)
            }
        }
    }
}
