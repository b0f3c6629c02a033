#include "Export/Timesheet/TimesheetPicture.h"

#include "Base/Try.h"
#include "Export/Timesheet/TimesheetDrawing.h"

namespace stintbook {

std::expected<TimesheetLayout, TimesheetProblem> timesheetLayout(const ExportDocumentModel& document,
                                                                 const ExportRegion& region,
                                                                 Instant generatedAt)
{
    const auto layOut =
        reinterpret_cast<decltype(&layOutTimesheet)>(TRY(timesheetFunction("layOutTimesheet")));
    TimesheetLayout result;
    layOut(document, region, generatedAt, result);
    return result;
}

std::expected<TimesheetPicture, TimesheetProblem> timesheetPicture(const TimesheetPage& page,
                                                                   const ExportRegion& region, int width)
{
    const auto draw =
        reinterpret_cast<decltype(&drawTimesheetPage)>(TRY(timesheetFunction("drawTimesheetPage")));
    DrawnTimesheetPage result;
    draw(page, region, width, result);
    return result;
}

} // namespace stintbook
