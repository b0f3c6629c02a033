#include "Export/Timesheet/TimesheetModule.h"

#include <dlfcn.h>
#include <fmt/format.h>

namespace stintbook {

std::string message(const TimesheetProblem& problem)
{
    return fmt::format("The timesheet could not be drawn: {}.", problem.reason);
}

/// From the module of this very version, which the program's own search path leads to. Stays loaded: the libraries
/// behind it cannot be unloaded.
std::expected<void*, TimesheetProblem> timesheetFunction(const char* name)
{
    auto* const module = dlopen(STINTBOOK_TIMESHEET_MODULE, RTLD_NOW | RTLD_LOCAL);
    auto* const function = module != nullptr ? dlsym(module, name) : nullptr;
    if (function == nullptr)
        return std::unexpected(TimesheetProblem{dlerror()});
    return function;
}

} // namespace stintbook
