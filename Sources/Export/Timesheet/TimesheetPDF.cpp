#include "Export/Timesheet/TimesheetPDF.h"

#include <dlfcn.h>
#include <fmt/format.h>

#include "Base/Try.h"
#include "Export/Timesheet/TimesheetDrawing.h"

namespace stintbook {

namespace {

/// From the module of this very version, which the program's own search path leads to. Stays loaded: the libraries
/// behind it cannot be unloaded.
std::expected<decltype(&drawTimesheet), TimesheetProblem> drawing()
{
    auto* const module = dlopen(STINTBOOK_TIMESHEET_MODULE, RTLD_NOW | RTLD_LOCAL);
    auto* const function = module != nullptr ? dlsym(module, "drawTimesheet") : nullptr;
    if (function == nullptr)
        return std::unexpected(TimesheetProblem{dlerror()});
    return reinterpret_cast<decltype(&drawTimesheet)>(function);
}

} // namespace

std::string message(const TimesheetProblem& problem)
{
    return fmt::format("The timesheet could not be drawn: {}.", problem.reason);
}

std::expected<std::string, TimesheetProblem> timesheetPDF(const ExportDocumentModel& document,
                                                          const ExportRegion& region, Instant generatedAt)
{
    auto* const draw = TRY(drawing());
    DrawnTimesheet result;
    draw(document, region, generatedAt, result);
    return result;
}

} // namespace stintbook
