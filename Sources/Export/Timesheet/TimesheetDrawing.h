#pragma once

#include "Export/Timesheet/TimesheetPDF.h"

namespace stintbook {

using DrawnTimesheet = std::expected<std::string, TimesheetProblem>;

/// What the drawing module is asked for, found by this name. The result is empty text before.
extern "C" [[gnu::visibility("default")]] void drawTimesheet(const ExportDocumentModel& document,
                                                             const ExportRegion& region, Instant generatedAt,
                                                             DrawnTimesheet& result);

} // namespace stintbook
