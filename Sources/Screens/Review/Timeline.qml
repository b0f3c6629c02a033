import QtQuick
import QtQuick.Templates as T
import Velloran

/// The day from its first to its last work, to be zoomed, panned and added to.
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
        // To whole points: what is painted would blur between them.
        track.contentX = Math.round(Math.max(0, Math.min(x, track.contentWidth - track.width)));
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

    TimelineScale {
        id: shownScale
        review: timeline.review
        width: track.width
    }
    FocusRing {
        anchors.margins: 1
        isShown: lane.activeFocus
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
        pixelAligned: true
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
        TimelineWork {
            id: lane
            // Wherever the track can be seen, also where it passes its edges.
            x: track.contentX - track.x
            y: timeline.laneTop - inset
            width: timeline.width
            height: timeline.laneHeight + 2 * inset
            inset: 3
            dayScale: shownScale
            review: timeline.review
            mouse: ground.mouse < 0 ? -1 : ground.mouse - x
            onPanned: (direction) => timeline.pan(direction)
        }
        MissingWorkArea {
            id: ground
            y: timeline.laneTop
            width: track.contentWidth
            height: timeline.laneHeight
            dayScale: shownScale
            review: timeline.review
            onWorkMissing: (start, end) => timeline.workMissing(start, end)
        }
        Item {
            id: chosen
            x: lane.x + lane.current.x
            y: timeline.laneTop
            width: lane.current.width
            height: timeline.laneHeight
            Repeater {
                model: timeline.isSplitPossible && chosen.width > 24 ? [true, false] : []
                SplitHandle {
                    required property bool modelData
                    isLeft: modelData
                    start: lane.current.start
                    end: lane.current.end
                    dayScale: shownScale
                    review: timeline.review
                    onSplitWanted: (second) => timeline.edits.splitAt(second)
                }
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
