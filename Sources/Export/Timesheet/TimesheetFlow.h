#pragma once

#include <string>
#include <vector>

#include "Export/Timesheet/TimesheetMetrics.h"
#include "Export/Timesheet/TimesheetPage.h"
#include "Export/Timesheet/TimesheetPaper.h"

namespace stintbook {

/// Puts blocks below each other and starts a page where one would pass the lower limit. Every page but the
/// first begins with the running header.
class TimesheetFlow {
public:
    /// The running header's text is set one line high, wherever its top is; its string is its label.
    TimesheetFlow(TimesheetPaper paper, const TimesheetMetrics& metrics, TimesheetText headerLine);

    double contentWidth() const { return m_pageSize.width - 2 * m_metrics.margin; }
    /// The lowest edge that a block may reach.
    double bottomLimit() const { return m_pageSize.height - m_metrics.margin - m_metrics.footerSpace; }
    /// Between the cursor and the limit, and at least one: a page takes whatever it is given first.
    std::size_t linesThatFit(double lineHeight, double padding = 0) const;
    /// Between the running header and the limit.
    double roomOfANewPage() const { return bottomLimit() - m_metrics.margin - headerHeight(); }

    /// Starts a page unless so much fits below the cursor; says whether it did.
    bool startPageUnlessFits(double height);
    void startPage();
    void skip(double gap) { m_cursor += gap; }

    /// Moves below a block that starts at the cursor, on a page of its own making where it does not fit.
    /// Returns its top.
    double place(TimesheetBlockKind kind, std::string label, double height);
    void add(TimesheetText text) { page().texts.push_back(std::move(text)); }
    /// At the cursor, over the whole width.
    void addRule();

    /// The pages so far, which the flow then holds no more.
    std::vector<TimesheetPage> takePages() { return std::move(m_pages); }

private:
    double room() const { return bottomLimit() - m_cursor; }
    TimesheetPage& page() { return m_pages.back(); }
    double headerHeight() const { return m_headerLine.lineHeight + m_metrics.titleBlockGap; }

    TimesheetMetrics m_metrics;
    TimesheetText m_headerLine;
    TimesheetPageSize m_pageSize;
    std::vector<TimesheetPage> m_pages;
    double m_cursor;
};

} // namespace stintbook
