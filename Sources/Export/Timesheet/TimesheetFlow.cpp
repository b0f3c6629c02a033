#include "Export/Timesheet/TimesheetFlow.h"

#include <algorithm>

namespace stintbook {

namespace {

/// Sums of lengths that fill a page exactly are not to fail by their last binary digit.
constexpr double tolerance = 1e-6;

} // namespace

TimesheetFlow::TimesheetFlow(TimesheetPaper paper, const TimesheetMetrics& metrics, TimesheetText headerLine)
    : m_metrics(metrics)
    , m_headerLine(std::move(headerLine))
    , m_pageSize(pageSize(paper))
    , m_pages(1)
    , m_cursor(metrics.margin)
{
}

std::size_t TimesheetFlow::linesThatFit(double lineHeight, double padding) const
{
    return static_cast<std::size_t>(std::max(1.0, (room() - 2 * padding + tolerance) / lineHeight));
}

bool TimesheetFlow::startPageUnlessFits(double height)
{
    if (height <= room() + tolerance)
        return false;
    startPage();
    return true;
}

void TimesheetFlow::startPage()
{
    m_pages.push_back({.number = page().number + 1});
    m_cursor = m_metrics.margin;
    auto header = m_headerLine;
    header.top = place(TimesheetBlockKind::runningHeader, header.lines.front().string, header.lineHeight);
    add(std::move(header));
    skip(m_metrics.titleBlockGap);
}

double TimesheetFlow::place(TimesheetBlockKind kind, std::string label, double height)
{
    startPageUnlessFits(height);
    const double top = m_cursor;
    page().blocks.push_back({kind, page().number, top, height, std::move(label)});
    m_cursor += height;
    return top;
}

void TimesheetFlow::addRule()
{
    page().rules.push_back({.top = m_cursor, .x = m_metrics.margin, .width = contentWidth()});
}

} // namespace stintbook
