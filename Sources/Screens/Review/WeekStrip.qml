import QtQuick
import Velloran

/// Two weeks of days.
ListView {
    id: strip

    required property ReviewModel review

    implicitHeight: 52
    orientation: ListView.Horizontal
    interactive: contentWidth > width
    spacing: Theme.unit
    model: review.calendar.week
    Accessible.role: Accessible.List
    Accessible.name: qsTr("Days")
    delegate: DayButton {
        width: 40
        height: 52
        showsName: true
        onClicked: strip.review.openDay(dayID)
    }
}
