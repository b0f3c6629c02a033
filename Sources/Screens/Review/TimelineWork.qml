import QtQuick
import Velloran

/// The lane of the timeline, to be pressed, pointed at and walked along.
TimelineLane {
    id: lane

    required property TimelineScale dayScale
    signal panned(int direction)

    function press(x: double, modifiers: int) {
        const pressed = placeAt(x);
        if (pressed.id.length === 0)
            return;
        forceActiveFocus();
        if (pressed.isWork && modifiers & Qt.ControlModifier)
            review.toggle(pressed.id);
        else if (pressed.isWork && modifiers & Qt.ShiftModifier)
            review.extendTo(pressed.id);
        else
            review.select(pressed.id);
    }
    function walk(direction: int) {
        review.selectNeighbourInTime(direction);
    }

    firstSecond: review.firstSecond
    pointsPerSecond: dayScale.pointsPerSecond
    anonymous: Theme.anonymous
    idle: Theme.idle
    hatch: Theme.strongBorder
    warning: Theme.warning
    frame: Theme.ink

    activeFocusOnTab: true
    Keys.onLeftPressed: (event) => event.modifiers & Qt.ShiftModifier ? panned(-1) : walk(-1)
    Keys.onRightPressed: (event) => event.modifiers & Qt.ShiftModifier ? panned(1) : walk(1)
    Accessible.role: Accessible.Slider
    Accessible.name: qsTr("Timeline")
    Accessible.description: current.name
    Accessible.onIncreaseAction: walk(1)
    Accessible.onDecreaseAction: walk(-1)

    TapHandler {
        id: tap
        onTapped: (pressed) => lane.press(pressed.position.x, tap.point.modifiers)
    }
    Item {
        x: lane.pointed.x
        width: lane.pointed.width
        height: lane.height - lane.inset
        Hint {
            isWanted: lane.pointed.id.length > 0
            text: lane.pointed.hint
        }
    }
}
