#include "Export/Timesheet/ExportRegion.h"

#include "Base/ReadersLocale.h"

namespace stintbook {

ExportRegion exportRegion(const Environment& variables)
{
    return {.moneyLocale = localeOf(variables, "LC_MONETARY"),
            .dateLocale = localeOf(variables, "LC_TIME"),
            .paper = paperOfLocale(localeOf(variables, "LC_PAPER"))};
}

} // namespace stintbook
