#pragma once

#include <cstdint>
#include <expected>
#include <vector>

#include "Base/Instant.h"
#include "Export/ExportDocumentModel.h"
#include "Export/Timesheet/ExportRegion.h"
#include "Export/Timesheet/TimesheetLayout.h"
#include "Export/Timesheet/TimesheetModule.h"

namespace stintbook {

/// A page on white paper: 0xffRRGGBB from left to right, from top to bottom.
struct TimesheetPicture {
    int width = 0;
    int height = 0;
    std::vector<std::uint32_t> pixels;
};

/// The pages that the document's file has.
std::expected<TimesheetLayout, TimesheetProblem> timesheetLayout(const ExportDocumentModel& document,
                                                                 const ExportRegion& region,
                                                                 Instant generatedAt);

/// One of them as it is printed, so many pixels wide. A value of its own may be drawn on any thread.
std::expected<TimesheetPicture, TimesheetProblem> timesheetPicture(const TimesheetPage& page,
                                                                   const ExportRegion& region, int width);

} // namespace stintbook
