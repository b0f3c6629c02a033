#include "App/RecordsPeriod.h"

#include <absl/time/civil_time.h>

namespace stintbook {

namespace {

DateRange monthOf(CivilDate date)
{
    const CivilDate first{date.year, date.month, 1};
    // The 32nd of a month lies in the next one, whatever its length.
    auto next = first.plusDays(31);
    next.day = 1;
    return {first, next.plusDays(-1)};
}

DateRange weekOf(CivilDate date, int firstDayOfWeek)
{
    const auto first = weekBeginning(date, firstDayOfWeek);
    return {first, first.plusDays(6)};
}

LocalDay beginningOn(CivilDate date, const CalendarContext& calendar)
{
    return {calendar.instantOn(date, 0, 0, 0), calendar.timeZoneIdentifier()};
}

} // namespace

CivilDate weekBeginning(CivilDate date, int firstDayOfWeek)
{
    const int weekday =
        static_cast<int>(absl::GetWeekday(absl::CivilDay(date.year, date.month, date.day))) + 1;
    return date.plusDays(-((weekday - firstDayOfWeek + 7) % 7));
}

std::optional<DateRange> datesOf(RecordsPeriod period, CivilDate today, int firstDayOfWeek)
{
    switch (period) {
    case RecordsPeriod::thisMonth:
        return monthOf(today);
    case RecordsPeriod::lastMonth:
        return monthOf(monthOf(today).first.plusDays(-1));
    case RecordsPeriod::thisWeek:
        return weekOf(today, firstDayOfWeek);
    case RecordsPeriod::lastWeek:
        return weekOf(today.plusDays(-7), firstDayOfWeek);
    case RecordsPeriod::all:
    case RecordsPeriod::custom:
        break;
    }
    return std::nullopt;
}

DayRange daysOf(const DateRange& dates, const CalendarContext& calendar)
{
    return {beginningOn(dates.first, calendar), beginningOn(dates.last, calendar)};
}

} // namespace stintbook
