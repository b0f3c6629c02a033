#include "Export/Timesheet/ColumnGeometry.h"

#include <algorithm>

namespace stintbook {

namespace {

constexpr double columnGap = 4;

} // namespace

ColumnGeometry::Span ColumnGeometry::textSpan(std::size_t column) const
{
    const double left = origins[column];
    const double right = left + widths[column];
    return columns[column].align == TimesheetAlign::left ? Span{left, right - columnGap}
                                                         : Span{left + columnGap, right};
}

ColumnGeometry::Span ColumnGeometry::labelSpan() const
{
    const auto figures = std::ranges::find(columns, TimesheetAlign::right, &TimesheetColumn::align);
    return {metrics.margin, origins[figures - columns.begin()]};
}

ColumnGeometry columnGeometry(std::vector<TimesheetColumn> columns, double contentWidth,
                              const TimesheetMetrics& metrics)
{
    ColumnGeometry geometry{.columns = std::move(columns), .metrics = metrics};
    double rest = contentWidth;
    for (const auto& column : geometry.columns)
        rest -= column.width;
    double x = metrics.margin;
    for (const auto& column : geometry.columns) {
        const bool takesTheRest = column.width == 0;
        // Without a column that takes it, the rest lies before the first that is right-aligned.
        if (takesTheRest || column.align == TimesheetAlign::right) {
            geometry.widths.push_back(takesTheRest ? rest : column.width);
            x += takesTheRest ? 0 : rest;
            rest = 0;
        } else {
            geometry.widths.push_back(column.width);
        }
        geometry.origins.push_back(x);
        x += geometry.widths.back();
    }
    return geometry;
}

} // namespace stintbook
