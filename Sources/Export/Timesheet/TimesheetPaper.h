#pragma once

#include <array>
#include <string_view>

#include "Base/RawValue.h"

namespace stintbook {

enum class TimesheetPaper { a4, usLetter };

template <> struct RawValues<TimesheetPaper> {
    static constexpr std::array table{
        std::pair{TimesheetPaper::a4, std::string_view("a4")},
        std::pair{TimesheetPaper::usLetter, std::string_view("usLetter")},
    };
};

/// In points, 72 an inch, as every length of a timesheet.
struct TimesheetPageSize {
    double width = 0;
    double height = 0;
};

/// Upright.
TimesheetPageSize pageSize(TimesheetPaper paper);

/// What a locale's region ("en_CA") prints on.
TimesheetPaper paperOfLocale(std::string_view locale);

} // namespace stintbook
