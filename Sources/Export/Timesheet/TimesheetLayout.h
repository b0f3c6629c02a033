#pragma once

#include <string>
#include <vector>

#include "Base/Instant.h"
#include "Export/ExportDocumentModel.h"
#include "Export/Timesheet/ExportRegion.h"
#include "Export/Timesheet/TextMeasuring.h"
#include "Export/Timesheet/TimesheetMetrics.h"
#include "Export/Timesheet/TimesheetPage.h"

namespace stintbook {

/// A timesheet as it is drawn: where every line of text and every rule stands on which page.
///
/// A title block, a section an account with a row a line (or a group), the section's total, the document's
/// total, notes, and a footer on every page. On a page that continues a section its column header stands
/// again. A heading keeps with its first row, and a section's last row with its total; a row that is taller
/// than a page continues on the next.
struct TimesheetLayout {
    TimesheetPaper paper = TimesheetPaper::a4;
    /// For the file's metadata, and the line above the pages after the first.
    std::string title;
    std::vector<TimesheetPage> pages;
};

/// The date of generation is that of the instant in the zone of the range's end.
TimesheetLayout layoutTimesheet(const ExportDocumentModel& document, const ExportRegion& region,
                                Instant generatedAt, TextMeasuring& measuring,
                                const TimesheetMetrics& metrics = {});

} // namespace stintbook
