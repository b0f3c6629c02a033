import QtQuick
import Velloran

/// Idle time, and time without a record: told apart by pattern, named where the mouse rests.
Item {
    id: gaps

    required property TimelineScale dayScale
    required property ReviewModel review
    signal taken()

    Repeater {
        model: gaps.review.spans
        Item {
            id: gap
            required property string spanID
            required property string title
            required property string times
            required property string duration
            required property bool isIdle
            required property double start
            required property double end
            readonly property ReviewModel review: gaps.review
            readonly property bool isChosen: review.current.length > 0 && review.isChosen(spanID)

            x: gaps.dayScale.place(start)
            width: Math.max(1, gaps.dayScale.place(end) - x)
            height: gaps.height
            Accessible.role: Accessible.ListItem
            Accessible.name: qsTr("%1, %2, %3").arg(title).arg(times).arg(duration)
            Accessible.selected: isChosen
            Accessible.onPressAction: review.select(spanID)

            Rectangle {
                anchors.fill: parent
                color: gap.isIdle ? Theme.idle : "transparent"
            }
            Image {
                anchors.fill: parent
                visible: !gap.isIdle
                fillMode: Image.Tile
                source: "image://glyphs/hatch/" + Theme.strongBorder
                sourceSize.width: 8
                sourceSize.height: 8
                opacity: 0.6
                Accessible.ignored: true
            }
            Rectangle {
                anchors.fill: parent
                visible: gap.isChosen
                color: "transparent"
                border.width: 2
                border.color: Theme.ink
                radius: 3
            }
            HoverHandler { id: hover }
            TapHandler {
                onTapped: {
                    gaps.taken();
                    gap.review.select(gap.spanID);
                }
            }
            HoverHint {
                isWanted: hover.hovered
                text: qsTr("%1  ·  %2  ·  %3").arg(gap.title).arg(gap.times).arg(gap.duration)
            }
        }
    }
}
