#include "Export/Timesheet/TimesheetRowData.h"

#include "Export/ExportCalendar.h"
#include "Export/ExportSummaryRow.h"

namespace stintbook {

namespace {

std::string descriptionOf(const ExportLine& line)
{
    return line.description.value_or("");
}

/// A group has none.
std::string descriptionOf(const ExportSummaryRow&)
{
    return {};
}

std::optional<std::string> amountText(bool isBillable, const std::optional<Decimal>& amount,
                                      const TimesheetSpelling& spelling)
{
    if (!isBillable)
        return std::nullopt;
    return amount ? spelling.amount(*amount) : TimesheetSpelling::unavailable;
}

template <typename Row>
TimesheetRowData rowData(const Row& row, const ExportRequest& request, const TimesheetSpelling& spelling)
{
    TimesheetRowData data{
        .dateText = spelling.date(exportCalendar(row.timeZoneIdentifier).dateOf(row.dayStart)),
        .project = row.projectName,
        .account =
            request.fields.includesProject ? accountName(row.clientName, row.projectName) : row.clientName,
        .description = descriptionOf(row),
        .duration = hoursOf(row.billedSeconds),
        .amountText = amountText(row.isBillable, row.amount, spelling),
    };
    if (row.isBillable && row.hourlyRate)
        data.rateText = spelling.rate(*row.hourlyRate);
    return data;
}

} // namespace

std::vector<TimesheetRowData> timesheetRows(const ExportSection& section, const ExportRequest& request,
                                            const TimesheetSpelling& spelling)
{
    std::vector<TimesheetRowData> rows;
    const auto append = [&](const auto& from) {
        for (const auto& row : from)
            rows.push_back(rowData(row, request, spelling));
    };
    if (request.mode == ExportMode::detailed)
        append(section.lines);
    else
        append(summaryRows(section.lines));
    return rows;
}

std::string cellText(const TimesheetRowData& row, TimesheetCell cell, const TimesheetSpelling& spelling)
{
    switch (cell) {
    case TimesheetCell::date:
        return row.dateText;
    case TimesheetCell::project:
        return row.project;
    case TimesheetCell::account:
        return row.account;
    case TimesheetCell::description:
        return row.description;
    case TimesheetCell::duration:
        return spelling.hours(row.duration);
    case TimesheetCell::rate:
        return row.rateText.value_or("");
    case TimesheetCell::amount:
        return row.amountText.value_or("");
    }
    return {};
}

std::string accountName(const std::string& clientName, const std::string& projectName)
{
    return clientName + " / " + projectName;
}

} // namespace stintbook
