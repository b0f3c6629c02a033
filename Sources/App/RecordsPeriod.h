#pragma once

#include <array>
#include <optional>
#include <string_view>

#include "Base/RawValue.h"
#include "Domain/CalendarContext.h"
#include "Domain/LocalDay.h"

namespace stintbook {

/// Which days are looked at, as one picks them. In the order of the picker.
enum class RecordsPeriod { thisMonth, lastMonth, thisWeek, lastWeek, all, custom };

template <> struct RawValues<RecordsPeriod> {
    static constexpr std::array table{
        std::pair{RecordsPeriod::thisMonth, std::string_view("thisMonth")},
        std::pair{RecordsPeriod::lastMonth, std::string_view("lastMonth")},
        std::pair{RecordsPeriod::thisWeek, std::string_view("thisWeek")},
        std::pair{RecordsPeriod::lastWeek, std::string_view("lastWeek")},
        std::pair{RecordsPeriod::all, std::string_view("all")},
        std::pair{RecordsPeriod::custom, std::string_view("custom")},
    };
};

/// Both inclusive.
struct DateRange {
    CivilDate first;
    CivilDate last;

    friend bool operator==(const DateRange&, const DateRange&) = default;
};

/// The first day of the week in which a date lies; weeks begin on a weekday of 1 (Monday) to 7.
CivilDate weekBeginning(CivilDate date, int firstDayOfWeek);

/// Of a month or week; absent for the periods that no date decides.
std::optional<DateRange> datesOf(RecordsPeriod period, CivilDate today, int firstDayOfWeek);

/// The days on which a range of dates begins and ends. A date that the zone never had stands for the moment at which
/// it would have been.
struct DayRange {
    LocalDay first;
    LocalDay last;
};
DayRange daysOf(const DateRange& dates, const CalendarContext& calendar);

} // namespace stintbook
