#pragma once

namespace stintbook {

/// The measures of a timesheet, in points.
struct TimesheetMetrics {
    double margin = 48;
    double titleSize = 22;
    double subtitleSize = 11;
    double generatedSize = 9;
    double sectionHeadingSize = 14;
    double columnHeaderSize = 9;
    double rowSize = 10;
    double totalSize = 10;
    double footerSize = 9;
    double sectionHeadingHeight = 17;
    double columnHeaderHeight = 13;
    double rowLineHeight = 12;
    double rowPadding = 2;
    double totalHeight = 18;
    double titleBlockGap = 10;
    double sectionGap = 12;
    double ruleGap = 8;
    double documentTotalGap = 22;
    double footerSpace = 20;

    /// The line height of a text for which none is fixed above.
    static constexpr double lineHeight(double size) { return 1.35 * size; }
};

} // namespace stintbook
