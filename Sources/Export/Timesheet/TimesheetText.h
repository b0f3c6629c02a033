#pragma once

#include <string>
#include <vector>

namespace stintbook {

enum class TimesheetWeight { regular, semibold };

enum class TimesheetInk { ink, secondary };

/// Which way a paragraph runs: that of its first letter that has one. Every line of it runs so, whatever the
/// line itself begins with.
enum class TimesheetDirection { leftToRight, rightToLeft };

struct TimesheetTextLine {
    std::string string;
    /// Its left edge, from the page's.
    double x = 0;
    /// The width that it takes.
    double boxWidth = 0;

    friend bool operator==(const TimesheetTextLine&, const TimesheetTextLine&) = default;
};

/// Lines of one look below each other: line i takes the stretch of `lineHeight` from top + i × lineHeight.
struct TimesheetText {
    std::vector<TimesheetTextLine> lines;
    double size = 0;
    TimesheetWeight weight = TimesheetWeight::regular;
    TimesheetInk ink = TimesheetInk::ink;
    /// All digits are equally wide.
    bool tabular = false;
    TimesheetDirection direction = TimesheetDirection::leftToRight;
    /// From the page's upper edge.
    double top = 0;
    double lineHeight = 0;

    friend bool operator==(const TimesheetText&, const TimesheetText&) = default;
};

} // namespace stintbook
