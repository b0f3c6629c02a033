#pragma once

#include <optional>
#include <string>
#include <vector>

#include "Base/Decimal.h"
#include "Export/ExportSection.h"
#include "Export/Timesheet/TimesheetColumn.h"
#include "Export/Timesheet/TimesheetSpelling.h"

namespace stintbook {

/// One row as it reads.
struct TimesheetRowData {
    std::string dateText;
    std::string project;
    std::string account;
    std::string description;
    /// Billed, in hours.
    Decimal duration;
    /// Absent for work that is not billable, and for a billable line without a rate.
    std::optional<std::string> rateText;
    /// Absent for work that is not billable; a dash for billable work without a rate.
    std::optional<std::string> amountText;
};

/// A row a line or a row a group, as the request's mode says. The account names the project where the
/// request does.
std::vector<TimesheetRowData> timesheetRows(const ExportSection& section, const ExportRequest& request,
                                            const TimesheetSpelling& spelling);

/// What stands in a column; empty where the row has nothing for it.
std::string cellText(const TimesheetRowData& row, TimesheetCell cell, const TimesheetSpelling& spelling);

/// "Client / Project".
std::string accountName(const std::string& clientName, const std::string& projectName);

} // namespace stintbook
