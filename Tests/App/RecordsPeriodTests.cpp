#include <gtest/gtest.h>

#include "App/RecordsPeriod.h"

namespace stintbook {

namespace {

constexpr int monday = 1;
constexpr int sunday = 7;

DateRange dates(RecordsPeriod period, CivilDate today, int firstDayOfWeek = monday)
{
    return *datesOf(period, today, firstDayOfWeek);
}

} // namespace

TEST(RecordsPeriod, KnowsMonthsOfEveryLength)
{
    EXPECT_EQ(dates(RecordsPeriod::thisMonth, {2028, 2, 29}), (DateRange{{2028, 2, 1}, {2028, 2, 29}}));
    EXPECT_EQ(dates(RecordsPeriod::thisMonth, {2026, 12, 1}), (DateRange{{2026, 12, 1}, {2026, 12, 31}}));
    EXPECT_EQ(dates(RecordsPeriod::lastMonth, {2027, 3, 31}), (DateRange{{2027, 2, 1}, {2027, 2, 28}}));
    EXPECT_EQ(dates(RecordsPeriod::lastMonth, {2027, 1, 15}), (DateRange{{2026, 12, 1}, {2026, 12, 31}}));
}

TEST(RecordsPeriod, BeginsWeeksOnTheReadersFirstDay)
{
    const CivilDate aSunday{2026, 11, 22};
    EXPECT_EQ(dates(RecordsPeriod::thisWeek, aSunday, monday), (DateRange{{2026, 11, 16}, aSunday}));
    EXPECT_EQ(dates(RecordsPeriod::thisWeek, aSunday, sunday), (DateRange{aSunday, {2026, 11, 28}}));
    EXPECT_EQ(dates(RecordsPeriod::lastWeek, {2026, 1, 1}, monday),
              (DateRange{{2025, 12, 22}, {2025, 12, 28}}));
}

TEST(RecordsPeriod, EndsWhereItsLastDayBegins)
{
    // Samoa never had 30 December 2011.
    const auto calendar = *CalendarContext::inZone("Pacific/Apia");
    const auto days = daysOf({{2011, 12, 30}, {2011, 12, 31}}, calendar);
    EXPECT_EQ(days.first, days.last);
    EXPECT_EQ(days.last, calendar.dayOn({2011, 12, 31}));
}

} // namespace stintbook
