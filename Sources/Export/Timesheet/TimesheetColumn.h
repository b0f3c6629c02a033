#pragma once

#include <string>
#include <vector>

#include "Export/ExportDocumentModel.h"

namespace stintbook {

enum class TimesheetCell { date, project, account, description, duration, rate, amount };

enum class TimesheetAlign { left, right };

struct TimesheetColumn {
    TimesheetCell cell = TimesheetCell::duration;
    std::string title;
    /// In points; 0 for the column that takes what the others leave.
    double width = 0;
    TimesheetAlign align = TimesheetAlign::left;
    bool tabular = false;

    /// Holds one date, number or amount, which is never broken over lines.
    bool isFigure() const;

    friend bool operator==(const TimesheetColumn&, const TimesheetColumn&) = default;
};

/// The columns that a document's fields ask for, from left to right. The client has a column only in a
/// document that covers more than one; the headings name it in any case.
std::vector<TimesheetColumn> timesheetColumns(const ExportDocumentModel& document);

} // namespace stintbook
