#pragma once

#include <string>

#include "Base/Environment.h"
#include "Export/Timesheet/TimesheetPaper.h"

namespace stintbook {

/// How the reader's region writes what a document holds, and what it prints on. Locales are named as in
/// "de_DE".
struct ExportRegion {
    std::string moneyLocale = "C";
    std::string dateLocale = "C";
    TimesheetPaper paper = TimesheetPaper::a4;
};

/// That of the reader, as the process's variables say.
ExportRegion exportRegion(const Environment& variables);

} // namespace stintbook
