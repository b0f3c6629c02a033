#include "Export/Timesheet/TimesheetPDF.h"

#include <filesystem>

#include <dlfcn.h>
#include <fmt/format.h>

#include "Base/Try.h"
#include "Export/Timesheet/TimesheetDrawing.h"

namespace stintbook {

namespace {

/// "lib/velloran/velloran-timesheet.so" beside the directory of the running program, or of one further out.
std::filesystem::path drawingModule()
{
    std::error_code unreadable;
    auto directory = std::filesystem::read_symlink("/proc/self/exe", unreadable).parent_path();
    constexpr int levels = 4;
    for (int level = 0; level < levels && directory.has_relative_path(); ++level) {
        directory = directory.parent_path();
        const auto candidate = directory / "lib" / "velloran" / "velloran-timesheet.so";
        if (std::filesystem::exists(candidate, unreadable))
            return candidate;
    }
    return "velloran-timesheet.so";
}

/// Stays loaded: the libraries behind it cannot be unloaded.
std::expected<decltype(&drawTimesheet), TimesheetProblem> drawing()
{
    auto* const module = dlopen(drawingModule().c_str(), RTLD_NOW | RTLD_LOCAL);
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
