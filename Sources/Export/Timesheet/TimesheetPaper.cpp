#include "Export/Timesheet/TimesheetPaper.h"

#include <string>

#include <unicode/ulocdata.h>

namespace stintbook {

TimesheetPageSize pageSize(TimesheetPaper paper)
{
    switch (paper) {
    case TimesheetPaper::a4:
        return {.width = 595.28, .height = 841.89};
    case TimesheetPaper::usLetter:
        return {.width = 612, .height = 792};
    }
    return {};
}

TimesheetPaper paperOfLocale(std::string_view locale)
{
    constexpr int millimetresOfALetterAcross = 216;
    UErrorCode status = U_ZERO_ERROR;
    int32_t height = 0;
    int32_t width = 0;
    ulocdata_getPaperSize(std::string(locale).c_str(), &height, &width, &status);
    return U_SUCCESS(status) && width == millimetresOfALetterAcross ? TimesheetPaper::usLetter
                                                                    : TimesheetPaper::a4;
}

} // namespace stintbook
