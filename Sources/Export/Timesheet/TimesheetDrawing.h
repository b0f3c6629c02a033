#pragma once

#include "Export/Timesheet/TimesheetPDF.h"
#include "Export/Timesheet/TimesheetPicture.h"

namespace stintbook {

using DrawnTimesheet = std::expected<std::string, TimesheetProblem>;
using DrawnTimesheetPage = std::expected<TimesheetPicture, TimesheetProblem>;

// What the drawing module is asked for, found by these names. The results are empty before.
extern "C" [[gnu::visibility("default")]] void drawTimesheet(const ExportDocumentModel& document,
                                                             const ExportRegion& region, Instant generatedAt,
                                                             DrawnTimesheet& result);

extern "C" [[gnu::visibility("default")]] void layOutTimesheet(const ExportDocumentModel& document,
                                                               const ExportRegion& region,
                                                               Instant generatedAt, TimesheetLayout& result);
extern "C" [[gnu::visibility("default")]] void drawTimesheetPage(const TimesheetPage& page,
                                                                 const ExportRegion& region, int width,
                                                                 DrawnTimesheetPage& result);

} // namespace stintbook
