import QtQuick
import QtQuick.Templates as T
import Velloran

/// The day's blocks and items, one below the other.
Panel {
    id: panel

    required property ReviewModel review

    ListView {
        id: list
        anchors.fill: parent
        anchors.margins: Theme.gap
        clip: true
        model: panel.review.subjects
        reuseItems: true
        activeFocusOnTab: true
        keyNavigationEnabled: false
        Accessible.role: Accessible.List
        Accessible.name: qsTr("Work of the day")
        Keys.onUpPressed: panel.review.selectNeighbour(-1)
        Keys.onDownPressed: panel.review.selectNeighbour(1)

        delegate: Item {
            id: row

            required property int index
            required property string subjectID
            required property string title
            required property string times
            required property string duration
            required property string application
            required property string client
            required property string clientColor
            required property string state

            readonly property color tint: clientColor.length > 0 ? clientColor : Theme.anonymous
            readonly property bool isChosen: panel.review.selected === subjectID
            onIsChosenChanged: if (isChosen) list.positionViewAtIndex(index, ListView.Contain)

            width: ListView.view.width
            height: 54
            Accessible.role: Accessible.ListItem
            Accessible.name: qsTr("%1, %2, %3, %4").arg(title).arg(times).arg(duration).arg(client.length > 0 ? client : qsTr("unassigned"))
            Accessible.selected: isChosen
            Accessible.onPressAction: panel.review.select(subjectID)

            Rectangle {
                anchors.fill: parent
                radius: Theme.radius
                color: row.isChosen ? Theme.selection : hover.hovered ? Theme.hover : "transparent"
            }
            HoverHandler { id: hover }
            TapHandler {
                onTapped: {
                    list.forceActiveFocus();
                    panel.review.select(row.subjectID);
                }
            }
            Rectangle {
                x: 12
                anchors.verticalCenter: parent.verticalCenter
                width: 4
                height: 30
                radius: 2
                color: row.tint
                opacity: row.state === "ignored" ? 0.4 : 1
            }
            Words {
                x: 28
                y: 9
                width: chip.x - x - Theme.gap
                text: row.title
                font.weight: Font.Medium
                font.strikeout: row.state === "ignored"
                opacity: row.state === "ignored" ? 0.6 : 1
                Accessible.ignored: true
            }
            Words {
                x: 28
                y: 29
                width: chip.x - x - Theme.gap
                text: row.application.length > 0 ? qsTr("%1  ·  %2").arg(row.times).arg(row.application) : row.times
                font.pixelSize: Theme.small
                color: Theme.secondaryInk
                Accessible.ignored: true
            }
            Chip {
                id: chip
                x: row.width - 72 - width
                anchors.verticalCenter: parent.verticalCenter
                text: row.client.length > 0 ? row.client : row.state === "conflicting" ? qsTr("Conflict") : qsTr("Unassigned")
                client: row.tint
            }
            Words {
                anchors.right: parent.right
                anchors.rightMargin: 14
                anchors.verticalCenter: parent.verticalCenter
                text: row.duration
                color: Theme.secondaryInk
                Accessible.ignored: true
            }
        }
    }
    Words {
        anchors.centerIn: parent
        visible: list.count === 0
        text: qsTr("Nothing was recorded on this day.")
        color: Theme.secondaryInk
    }
}
