#include "Export/Timesheet/TimesheetPDF.h"

#include "Base/Try.h"
#include "Export/Timesheet/TimesheetDrawing.h"

namespace stintbook {

std::expected<std::string, TimesheetProblem> timesheetPDF(const ExportDocumentModel& document,
                                                          const ExportRegion& region, Instant generatedAt)
{
    const auto draw = reinterpret_cast<decltype(&drawTimesheet)>(TRY(timesheetFunction("drawTimesheet")));
    DrawnTimesheet result;
    draw(document, region, generatedAt, result);
    return result;
}

} // namespace stintbook
