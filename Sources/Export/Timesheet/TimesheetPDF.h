#pragma once

#include <expected>
#include <string>

#include "Base/Instant.h"
#include "Export/ExportDocumentModel.h"
#include "Export/Timesheet/ExportRegion.h"
#include "Export/Timesheet/TimesheetModule.h"

namespace stintbook {

/// The document as a timesheet, as the bytes of a PDF file with its fonts embedded. The same document, region
/// and instant give the same bytes, as long as the system's fonts do not change.
std::expected<std::string, TimesheetProblem> timesheetPDF(const ExportDocumentModel& document,
                                                          const ExportRegion& region, Instant generatedAt);

} // namespace stintbook
