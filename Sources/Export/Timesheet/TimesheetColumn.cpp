#include "Export/Timesheet/TimesheetColumn.h"

#include <algorithm>

namespace stintbook {

namespace {

constexpr double accountWidth = 110;

bool coversSeveralClients(const ExportDocumentModel& document)
{
    const auto& lines = document.lines;
    return std::ranges::adjacent_find(lines, std::not_equal_to(), &ExportLine::clientName) != lines.end();
}

} // namespace

bool TimesheetColumn::isFigure() const
{
    return cell == TimesheetCell::date || align == TimesheetAlign::right;
}

std::vector<TimesheetColumn> timesheetColumns(const ExportDocumentModel& document)
{
    const auto& fields = document.request.fields;
    const bool showsClient = fields.includesClient && coversSeveralClients(document);

    std::vector<TimesheetColumn> columns;
    if (fields.includesDate)
        columns.push_back({TimesheetCell::date, "Date", 64});
    if (showsClient)
        columns.push_back(
            {TimesheetCell::account, fields.includesProject ? "Client / Project" : "Client", accountWidth});
    else if (fields.includesProject)
        columns.push_back({TimesheetCell::project, "Project", accountWidth});
    if (fields.includesDescription)
        columns.push_back({TimesheetCell::description, "Description"});

    columns.push_back({TimesheetCell::duration, "Duration", 52, TimesheetAlign::right, true});
    if (fields.includesRateAndAmount) {
        columns.push_back({TimesheetCell::rate, "Rate", 56, TimesheetAlign::right, true});
        columns.push_back({TimesheetCell::amount, "Amount", 66, TimesheetAlign::right, true});
    }
    return columns;
}

} // namespace stintbook
