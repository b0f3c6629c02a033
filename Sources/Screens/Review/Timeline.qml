import QtQuick
import QtQuick.Templates as T
import Velloran

/// The day from its first to its last work: blocks in their clients' colours, idle time and what was not recorded.
Panel {
    id: timeline

    required property ReviewModel review
    required property ReviewEdits edits
    /// Somebody dragged over time without work; in seconds of the day.
    signal workMissing(double start, double end)

    readonly property var inspected: review.inspected
    readonly property bool isSplitPossible: inspected.canSplit ?? false
    readonly property int laneTop: 26
    readonly property int laneHeight: track.height - laneTop - Theme.gap

    function zoomAround(factor: double, x: double) {
        const second = review.firstSecond + (track.contentX + x) / shownScale.pointsPerSecond;
        shownScale.zoom = Math.max(1, Math.min(shownScale.zoom * factor, 48));
        panTo((second - review.firstSecond) * shownScale.pointsPerSecond - x);
    }
    function zoomBy(factor: double) {
        zoomAround(factor, isSelectionShown() ? shownScale.place(review.middleOfSelection()) - track.contentX : track.width / 2);
    }
    function panTo(x: double) {
        track.contentX = Math.max(0, Math.min(x, track.contentWidth - track.width));
    }
    function pan(direction: int) {
        panTo(track.contentX + direction * track.width / 3);
    }
    function isSelectionShown(): bool {
        const x = shownScale.place(review.middleOfSelection());
        return current.length > 0 && x >= track.contentX && x <= track.contentX + track.width;
    }
    readonly property string current: review.current
    onCurrentChanged: if (current.length > 0 && !isSelectionShown()) panTo(shownScale.place(review.middleOfSelection()) - track.width / 2)
    function showAll() {
        shownScale.zoom = 1;
        track.contentX = 0;
    }

    implicitHeight: Theme.isLow ? 88 : 124
    clip: true
    activeFocusOnTab: true
    Accessible.role: Accessible.List
    Accessible.name: qsTr("Timeline")
    Keys.onLeftPressed: (event) => event.modifiers & Qt.ShiftModifier ? pan(-1) : review.selectNeighbourInTime(-1)
    Keys.onRightPressed: (event) => event.modifiers & Qt.ShiftModifier ? pan(1) : review.selectNeighbourInTime(1)

    TimelineScale {
        id: shownScale
        review: timeline.review
        width: track.width
    }
    FocusRing {
        anchors.margins: 1
        isShown: timeline.activeFocus
    }
    Timer {
        interval: 60000
        repeat: true
        running: timeline.visible && Application.state === Qt.ApplicationActive
        triggeredOnStart: true
        onTriggered: timeline.review.tick()
    }

    Flickable {
        id: track
        anchors.fill: parent
        anchors.margins: Theme.isLow ? Theme.gap : Theme.padding
        contentWidth: width * shownScale.zoom
        contentHeight: height
        boundsBehavior: Flickable.StopAtBounds
        flickableDirection: Flickable.HorizontalFlick
        interactive: false
        T.ScrollBar.horizontal: ScrollEdge { }

        WheelHandler {
            acceptedModifiers: Qt.ControlModifier
            onWheel: (event) => timeline.zoomAround(event.angleDelta.y > 0 ? 1.25 : 0.8, event.x - track.contentX)
        }
        WheelHandler {
            acceptedModifiers: Qt.NoModifier
            orientation: Qt.Vertical
            onWheel: (event) => timeline.panTo(track.contentX - event.angleDelta.y - event.angleDelta.x)
        }
        PinchHandler {
            id: pinch
            property double before: 1
            target: null
            onActiveChanged: before = 1
            onActiveScaleChanged: {
                timeline.zoomAround(activeScale / before, centroid.position.x - track.contentX);
                before = activeScale;
            }
        }

        Repeater {
            model: timeline.review.hours
            Item {
                id: hour
                required property var modelData
                required property int index
                readonly property bool isLast: modelData.second >= timeline.review.lastSecond
                x: shownScale.place(modelData.second)
                height: track.height
                visible: shownScale.pointsPerSecond * 3600 > 44 || index % 2 === 0
                Rectangle {
                    y: 20
                    width: 1
                    height: track.height - 20
                    color: Theme.border
                }
                Words {
                    x: hour.index === 0 ? 0 : hour.isLast ? -width : -width / 2
                    text: hour.modelData.name
                    font.pixelSize: Theme.caption
                    color: Theme.secondaryInk
                    Accessible.ignored: true
                }
            }
        }
        Rectangle {
            y: timeline.laneTop
            width: track.contentWidth
            height: timeline.laneHeight
            radius: 3
            color: Theme.sunken
        }
        TimelineGaps {
            y: timeline.laneTop
            height: timeline.laneHeight
            dayScale: shownScale
            review: timeline.review
            onTaken: timeline.forceActiveFocus()
        }
        MissingWorkArea {
            y: timeline.laneTop
            width: track.contentWidth
            height: timeline.laneHeight
            dayScale: shownScale
            review: timeline.review
            onWorkMissing: (start, end) => timeline.workMissing(start, end)
        }
        Repeater {
            model: timeline.review.blocks
            TimelineBlock {
                y: timeline.laneTop
                height: timeline.laneHeight
                dayScale: shownScale
                review: timeline.review
                isSplitPossible: timeline.isSplitPossible
                onTaken: timeline.forceActiveFocus()
                onSplitWanted: (second) => timeline.edits.splitAt(second)
            }
        }
        Rectangle {
            x: shownScale.place(timeline.review.now)
            y: 18
            width: 2
            height: track.height - 18
            visible: timeline.review.now >= timeline.review.firstSecond && timeline.review.now <= timeline.review.lastSecond
            color: Theme.danger
            Accessible.ignored: true
        }
    }
}
