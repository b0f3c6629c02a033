import QtQuick
import QtQuick.Layouts
import Velloran

/// Which day it is, its figures, and what can be done with all of it.
RowLayout {
    id: header

    required property ReviewModel review

    spacing: Theme.gap

    ColumnLayout {
        Layout.fillWidth: true
        spacing: 2
        Words {
            Layout.fillWidth: true
            text: header.review.title
            font.pixelSize: Theme.display
            font.weight: Font.DemiBold
            Accessible.role: Accessible.Heading
            Accessible.name: text
        }
        Words {
            Layout.fillWidth: true
            text: header.review.figures
            color: Theme.secondaryInk
        }
    }
    IconButton {
        glyph: "undo"
        text: header.review.undoTitle.length > 0 ? qsTr("Undo %1").arg(header.review.undoTitle) : qsTr("Undo")
        enabled: header.review.undoTitle.length > 0
        onClicked: header.review.undo()
    }
    IconButton {
        glyph: "redo"
        text: header.review.redoTitle.length > 0 ? qsTr("Redo %1").arg(header.review.redoTitle) : qsTr("Redo")
        enabled: header.review.redoTitle.length > 0
        onClicked: header.review.redo()
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
    Item { implicitWidth: Theme.gap }
    ActionButton {
        isPrimary: true
        text: header.review.isReady ? qsTr("Ready to Bill") : qsTr("Mark Ready to Bill")
        enabled: header.review.canMarkReady
        onClicked: header.review.markReady()
    }
}
