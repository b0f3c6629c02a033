import QtQuick
import Velloran

/// Where the moments of a day lie on its timeline.
QtObject {
    required property ReviewModel review
    /// Of the whole timeline, unzoomed.
    required property double width
    property double zoom: 1

    readonly property double span: Math.max(review.lastSecond - review.firstSecond, 3600)
    readonly property double pointsPerSecond: width * zoom / span

    /// Whole pixels, or the spaces between blocks would vanish.
    function place(second: double): int {
        return Math.round((second - review.firstSecond) * pointsPerSecond);
    }
    /// To the minute.
    function secondAt(x: double): double {
        const second = review.firstSecond + x / pointsPerSecond;
        return Math.max(0, Math.min(Math.round(second / 60) * 60, review.dayLength));
    }
}
