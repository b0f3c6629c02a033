import QtQuick
import QtQuick.Templates as T
import Velloran

/// Two weeks of days, each with how far its review has come.
ListView {
    id: strip

    required property ReviewModel review

    implicitHeight: 52
    orientation: ListView.Horizontal
    interactive: contentWidth > width
    spacing: Theme.unit
    model: review.week

    delegate: T.Button {
        id: day

        required property string dayID
        required property string name
        required property string number
        required property bool isChosen
        required property bool isToday
        required property bool isWeekend
        required property bool hasWork
        required property double reviewed

        readonly property color ink: isChosen ? Theme.accentInk : isWeekend ? Theme.secondaryInk : Theme.ink

        width: 40
        height: 52
        hoverEnabled: true
        focusPolicy: Qt.StrongFocus
        onClicked: strip.review.openDay(dayID)
        Accessible.role: Accessible.Button
        Accessible.name: hasWork ? qsTr("%1 %2, %3 % reviewed").arg(name).arg(number).arg(Math.round(reviewed * 100))
                                 : qsTr("%1 %2").arg(name).arg(number)
        Accessible.onPressAction: day.clicked()

        background: Rectangle {
            radius: Theme.radius
            color: day.isChosen ? Theme.accent : day.hovered ? Theme.hover : "transparent"
            border.width: day.isToday && !day.isChosen ? 1 : 0
            border.color: Theme.accent
            FocusRing { isShown: day.visualFocus }
        }
        contentItem: Item {
            Words {
                y: 6
                anchors.horizontalCenter: parent.horizontalCenter
                text: day.name
                font.pixelSize: Theme.caption
                color: day.isChosen ? Theme.accentInk : Theme.secondaryInk
                Accessible.ignored: true
            }
            Words {
                y: 20
                anchors.horizontalCenter: parent.horizontalCenter
                text: day.number
                font.pixelSize: Theme.heading
                font.weight: Font.DemiBold
                color: day.ink
                Accessible.ignored: true
            }
            Rectangle {
                x: 10
                y: 42
                width: 20
                height: 3
                visible: day.hasWork
                color: day.isChosen ? Qt.rgba(1, 1, 1, 0.35) : Theme.border
                Rectangle {
                    width: Math.round(20 * day.reviewed)
                    height: 3
                    color: day.isChosen ? Theme.accentInk : Theme.good
                }
            }
        }
    }
}
