import QtQuick
import Velloran

/// A time of the day. What it was given is kept to the second until something else is typed.
InputField {
    id: control

    required property ReviewModel review
    property double given: -1

    function show(second: double) {
        given = second;
        text = second < 0 ? "" : review.timeText(second);
    }
    /// In seconds of the day; negative while no time is typed.
    function secondOfDay(notBefore: double): double {
        return given >= 0 && text === review.timeText(given) ? given : review.secondOf(text, notBefore);
    }
}
