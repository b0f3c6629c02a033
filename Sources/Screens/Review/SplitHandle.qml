import QtQuick
import Velloran

/// Is dragged from an edge of the work that is its parent to where that is to be split.
Item {
    id: handle

    required property TimelineScale dayScale
    required property ReviewModel review
    required property double start
    required property double end
    signal splitWanted(double second)
    required property bool isLeft
    readonly property double at: isLeft ? Math.max(0, drag.activeTranslation.x) : Math.min(0, drag.activeTranslation.x)
    readonly property double second: dayScale.secondAt(dayScale.place(isLeft ? start : end) + at)

    x: (isLeft ? 0 : parent.width - width) + (drag.active ? at : 0)
    width: 10
    height: parent.height
    HoverHandler { cursorShape: Qt.SplitHCursor }
    DragHandler {
        id: drag
        target: null
        yAxis.enabled: false
        // Not given up to what adds missing work where it lies.
        grabPermissions: PointerHandler.CanTakeOverFromAnything
        onActiveChanged: {
            if (!active && handle.second > handle.start && handle.second < handle.end)
                handle.splitWanted(handle.second);
        }
    }
    Rectangle {
        x: handle.isLeft ? 0 : handle.width - width
        width: drag.active ? 2 : 4
        height: drag.active ? parent.height : 20
        anchors.verticalCenter: parent.verticalCenter
        radius: 2
        color: Theme.panel
        border.width: 1
        border.color: Theme.ink
    }
    Hint {
        isWanted: drag.active
        delay: 0
        text: handle.review.timeText(handle.second)
    }
}
