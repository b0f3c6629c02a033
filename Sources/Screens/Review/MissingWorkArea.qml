import QtQuick
import Velloran

/// Over the timeline: to drag over time for which work is missing.
Item {
    id: area

    required property TimelineScale dayScale
    required property ReviewModel review
    /// Where the mouse is; negative while it is elsewhere.
    readonly property double mouse: hover.hovered ? hover.point.position.x : -1
    signal workMissing(double start, double end)

    readonly property double from: dayScale.secondAt(Math.min(drag.centroid.pressPosition.x, drag.centroid.position.x))
    readonly property double to: dayScale.secondAt(Math.max(drag.centroid.pressPosition.x, drag.centroid.position.x))

    HoverHandler {
        id: hover
        cursorShape: Qt.CrossCursor
    }
    DragHandler {
        id: drag
        property double start
        property double end
        target: null
        yAxis.enabled: false
        onCentroidChanged: {
            if (!active)
                return;
            start = area.from;
            end = area.to;
        }
        onActiveChanged: if (!active && end > start) area.workMissing(start, end)
    }
    Rectangle {
        x: area.dayScale.place(area.from)
        width: area.dayScale.place(area.to) - x
        height: parent.height
        visible: drag.active
        radius: 3
        opacity: 0.85
        color: Theme.selection
        border.color: Theme.accent
        Words {
            anchors.centerIn: parent
            visible: implicitWidth < parent.width - 8
            text: qsTr("%1 – %2").arg(area.review.timeText(area.from)).arg(area.review.timeText(area.to))
            font.pixelSize: Theme.caption
        }
    }
}
