#pragma once

#include <vector>

#include "Export/Timesheet/TimesheetColumn.h"
#include "Export/Timesheet/TimesheetMetrics.h"

namespace stintbook {

/// Where columns stand. Left-aligned ones follow each other from the left margin, right-aligned ones end at
/// the right margin; with a description between them they touch.
struct ColumnGeometry {
    std::vector<TimesheetColumn> columns;
    /// A column's, in points; together not more than the content's.
    std::vector<double> widths;
    /// A column's left edge, from the page's.
    std::vector<double> origins;
    TimesheetMetrics metrics;

    struct Span {
        double left = 0;
        double right = 0;

        double width() const { return right - left; }
    };
    /// What a cell's text may take: the column without the gap that keeps it from its neighbour.
    Span textSpan(std::size_t column) const;
    /// What is left of the first right-aligned column.
    Span labelSpan() const;
};

ColumnGeometry columnGeometry(std::vector<TimesheetColumn> columns, double contentWidth,
                              const TimesheetMetrics& metrics);

} // namespace stintbook
