#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "Export/Timesheet/TimesheetText.h"

namespace stintbook {

struct TextStyle {
    double size = 0;
    TimesheetWeight weight = TimesheetWeight::regular;
    bool tabular = false;
};

struct MeasuredLine {
    std::string string;
    double width = 0;
};

/// A paragraph broken into lines; not empty.
struct MeasuredText {
    std::vector<MeasuredLine> lines;
    TimesheetDirection direction = TimesheetDirection::leftToRight;
};

/// Tells a layout what texts take, without a surface to draw on.
class TextMeasuring {
public:
    virtual ~TextMeasuring() = default;

    /// Breaks between words, and within a word that is wider than `width`, between user-perceived characters.
    /// The text's own line breaks stay. A line is wider than `width` only when one character is.
    virtual MeasuredText wrapped(std::string_view text, const TextStyle& style, double width) = 0;
    /// Of a text on one line.
    virtual double widthOf(std::string_view text, const TextStyle& style) = 0;
};

} // namespace stintbook
