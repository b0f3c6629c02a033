import QtQuick
import Velloran

/// Which of the steps this is.
Row {
    id: marks

    required property var names
    required property int step

    spacing: Theme.gap
    Accessible.role: Accessible.StaticText
    Accessible.name: qsTr("Step %1 of %2: %3").arg(step + 1).arg(names.length).arg(names[step])

    Repeater {
        model: marks.names.length
        Rectangle {
            required property int index
            width: index === marks.step ? 24 : 8
            height: 8
            radius: 4
            color: index <= marks.step ? Theme.accent : Theme.strongBorder
            Behavior on width { NumberAnimation { duration: Theme.quick } }
        }
    }
}
