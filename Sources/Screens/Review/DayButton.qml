import QtQuick
import QtQuick.Templates as T
import Velloran

/// A day to open, with how far its review has come.
T.AbstractButton {
    id: day

    required property string dayID
    required property string name
    required property string number
    required property bool isChosen
    required property bool isToday
    required property bool isWeekend
    required property bool isOutside
    required property bool hasWork
    required property double reviewed
    required property string state
    property bool showsName: false
    property bool isCurrent: false

    hoverEnabled: true
    focusPolicy: Qt.StrongFocus
    Accessible.role: Accessible.Button
    Accessible.name: hasWork ? qsTr("%1 %2, %3").arg(name).arg(number).arg(state) : qsTr("%1 %2").arg(name).arg(number)
    Accessible.selected: isChosen
    Accessible.onPressAction: day.clicked()

    Hint {
        isWanted: day.hovered && day.hasWork
        text: day.state
    }
    background: Rectangle {
        radius: Theme.radius
        color: day.isChosen ? Theme.accent : day.hovered ? Theme.hover : "transparent"
        border.width: day.isToday && !day.isChosen ? 1 : 0
        border.color: Theme.accent
        FocusRing { isShown: day.visualFocus || day.isCurrent }
    }
    contentItem: Item {
        Words {
            y: 6
            anchors.horizontalCenter: parent.horizontalCenter
            visible: day.showsName
            text: day.name
            font.pixelSize: Theme.caption
            color: day.isChosen ? Theme.accentInk : Theme.secondaryInk
            Accessible.ignored: true
        }
        Words {
            y: day.showsName ? 20 : 10
            anchors.horizontalCenter: parent.horizontalCenter
            text: day.number
            font.pixelSize: day.showsName ? Theme.heading : Theme.body
            font.weight: Font.DemiBold
            color: day.isChosen ? Theme.accentInk : day.isWeekend ? Theme.secondaryInk : Theme.ink
            Accessible.ignored: true
        }
        Rectangle {
            x: 10
            y: parent.height - 10
            width: 20
            height: 3
            visible: day.hasWork
            color: day.isChosen ? Theme.chosenTrack : Theme.border
            Rectangle {
                width: Math.round(20 * day.reviewed)
                height: 3
                color: day.isChosen ? Theme.accentInk : Theme.good
            }
        }
    }
}
