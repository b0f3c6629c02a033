import QtQuick
import Velloran

/// A row of the day's list.
Item {
    id: row

    required property ListView view
    required property ReviewModel review
    required property string subjectID
    required property string title
    required property string moreTitles
    required property string times
    required property string duration
    required property string application
    required property string client
    required property string project
    required property string clientColor
    required property string state
    required property string stateText
    required property bool isUnresolved

    readonly property color tint: clientColor.length > 0 ? clientColor : Theme.anonymous
    readonly property bool isChosen: review.current.length > 0 && review.isChosen(subjectID)
    readonly property bool isCurrent: review.current === subjectID
    readonly property bool isIgnored: state === "ignored"

    // Of the words between mark and chip. Anchored at both ends they would be laid out twice: before the anchors, too.
    readonly property real wordsWidth: width - edge - mark.width - edge - 2 * Theme.gap - chip.width - mention.width - length.width - edge
    readonly property real edge: 12
    readonly property real wordsOpacity: isIgnored ? 0.6 : 1

    height: 54
    Accessible.role: Accessible.ListItem
    Accessible.name: qsTr("%1, %2, %3, %4, %5").arg(title).arg(times).arg(duration).arg(client.length > 0 ? qsTr("%1, %2").arg(client).arg(project) : qsTr("unassigned")).arg(stateText)
    Accessible.selectable: true
    Accessible.selected: isChosen
    Accessible.onPressAction: review.select(subjectID)

    Rectangle {
        anchors.fill: parent
        radius: Theme.radius
        color: row.isChosen ? Theme.selection : hover.hovered ? Theme.hover : "transparent"
        border.width: row.isCurrent && row.view.activeFocus ? 2 : 0
        border.color: Theme.accent
    }
    HoverHandler { id: hover }
    MouseArea {
        anchors.fill: parent
        onClicked: (event) => {
            row.view.forceActiveFocus(Qt.MouseFocusReason);
            if (event.modifiers & Qt.ControlModifier)
                row.review.toggle(row.subjectID);
            else if (event.modifiers & Qt.ShiftModifier)
                row.review.extendTo(row.subjectID);
            else
                row.review.select(row.subjectID);
        }
    }
    Rectangle {
        id: mark
        anchors.left: parent.left
        anchors.leftMargin: row.edge
        anchors.verticalCenter: parent.verticalCenter
        width: 4
        height: 30
        radius: 2
        color: row.tint
        opacity: row.isIgnored ? 0.4 : 1
    }
    Words {
        anchors.left: mark.right
        anchors.leftMargin: row.edge
        anchors.bottom: parent.verticalCenter
        anchors.bottomMargin: 1
        width: row.wordsWidth
        opacity: row.wordsOpacity
        text: row.moreTitles.length > 0 ? qsTr("%1  ·  %2").arg(row.title).arg(row.moreTitles) : row.title
        font.weight: Font.Medium
        font.strikeout: row.isIgnored
        Accessible.ignored: true
    }
    Words {
        anchors.left: mark.right
        anchors.leftMargin: row.edge
        anchors.top: parent.verticalCenter
        anchors.topMargin: 2
        width: row.wordsWidth
        opacity: row.wordsOpacity
        text: row.application.length > 0 ? qsTr("%1  ·  %2").arg(row.times).arg(row.application) : row.times
        font.pixelSize: Theme.small
        color: Theme.secondaryInk
        Accessible.ignored: true
    }
    Chip {
        id: chip
        anchors.right: mention.left
        anchors.rightMargin: Theme.gap
        anchors.verticalCenter: parent.verticalCenter
        text: row.client.length > 0 && row.state !== "conflicting" ? row.client : row.stateText
        client: row.isUnresolved ? Theme.warning : row.tint
    }
    Glyph {
        id: mention
        anchors.right: length.left
        anchors.verticalCenter: parent.verticalCenter
        size: 14
        name: row.state === "reviewed" ? "check" : row.isUnresolved ? "warning" : row.state === "assignedByRule" ? "rules" : "minus"
        visible: row.state === "reviewed" || row.isUnresolved || row.state === "assignedByRule"
        ink: row.state === "reviewed" ? Theme.good : row.isUnresolved ? Theme.warning : Theme.secondaryInk
        HoverHandler { id: overMention }
        Hint {
            isWanted: overMention.hovered
            text: row.stateText
        }
    }
    Words {
        id: length
        anchors.right: parent.right
        anchors.rightMargin: row.edge
        anchors.verticalCenter: parent.verticalCenter
        width: 76
        horizontalAlignment: Text.AlignRight
        text: row.duration
        color: Theme.secondaryInk
        Accessible.ignored: true
    }
}
