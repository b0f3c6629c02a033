#pragma once

#include <string_view>

#include "Export/Timesheet/ColumnGeometry.h"
#include "Export/Timesheet/TextMeasuring.h"

namespace stintbook {

/// Sets texts between a left and a right edge. Each call takes a text without lines, which tells the look,
/// and gives it with lines; with none for a blank string.
class TextSetting {
public:
    using Span = ColumnGeometry::Span;

    explicit TextSetting(TextMeasuring& measuring)
        : m_measuring(measuring)
    {
    }

    /// On as many lines as it takes, from the left edge.
    TimesheetText wrapped(TimesheetText look, std::string_view string, Span span) const;
    /// The same, but from the edge at which its script begins to read.
    TimesheetText wrappedFromItsStart(TimesheetText look, std::string_view string, Span span) const;
    /// On one line, its end left out where it is too long.
    TimesheetText shortened(const TimesheetText& look, std::string_view string, Span span) const;
    /// On one line, smaller where it is too wide: a number that is broken could be read as another one. One
    /// that would become illegible is broken all the same.
    TimesheetText figure(TimesheetText look, std::string_view string, Span span, TimesheetAlign align) const;

private:
    TextMeasuring& m_measuring;
};

} // namespace stintbook
