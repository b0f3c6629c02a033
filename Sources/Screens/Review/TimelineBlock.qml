import QtQuick
import Velloran

/// A block or an item on the timeline. Its edges, while it is selected, are handles to split it.
Rectangle {
    id: block

    required property TimelineScale dayScale
    required property ReviewModel review
    /// What is selected can be split.
    property bool isSplitPossible: false
    signal taken()
    signal splitWanted(double second)
    required property string subjectID
    required property string title
    required property string times
    required property string duration
    required property string clientColor
    required property string client
    required property string state
    required property double start
    required property double end

    readonly property bool isChosen: review.current.length > 0 && review.isChosen(subjectID)
    readonly property bool canSplit: width > 24 && isSplitPossible && review.current === subjectID

    x: dayScale.place(start)
    width: Math.max(2, dayScale.place(end) - x - (dayScale.place(end) - x > 4 ? 1 : 0))
    radius: Math.min(3, width / 3)
    opacity: state === "ignored" ? 0.35 : 1
    color: clientColor.length > 0 ? clientColor : Theme.anonymous
    border.width: state === "conflicting" ? 2 : 0
    border.color: Theme.warning
    Accessible.role: Accessible.ListItem
    Accessible.name: qsTr("%1, %2, %3").arg(times).arg(title).arg(client.length > 0 ? client : qsTr("unassigned"))
    Accessible.selected: isChosen
    Accessible.onPressAction: review.select(subjectID)

    HoverHandler { id: hover }
    TapHandler {
        acceptedModifiers: Qt.NoModifier
        onTapped: {
            block.taken();
            block.review.select(block.subjectID);
        }
    }
    TapHandler {
        acceptedModifiers: Qt.ControlModifier
        onTapped: block.review.toggle(block.subjectID)
    }
    TapHandler {
        acceptedModifiers: Qt.ShiftModifier
        onTapped: block.review.extendTo(block.subjectID)
    }
    HoverHint {
        isWanted: hover.hovered
        text: qsTr("%1  ·  %2  ·  %3").arg(block.times).arg(block.duration).arg(block.title)
    }
    Rectangle {
        anchors.fill: parent
        anchors.margins: -3
        visible: block.isChosen
        radius: 5
        color: "transparent"
        border.width: 2
        border.color: Theme.ink
    }
    Repeater {
        model: block.canSplit ? [true, false] : []
        SplitHandle {
            required property bool modelData
            isLeft: modelData
            owner: block
            start: block.start
            end: block.end
            dayScale: block.dayScale
            review: block.review
            onSplitWanted: (second) => block.splitWanted(second)
        }
    }
}
