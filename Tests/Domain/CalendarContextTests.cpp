#include <cmath>
#include <limits>

#include <gtest/gtest.h>

#include "Domain/CalendarContext.h"

namespace stintbook {
namespace {

CalendarContext calendarIn(std::string_view zone)
{
    return CalendarContext::inZone(zone).value();
}

CivilDate date(std::string_view text)
{
    return CivilDate::parse(text).value();
}

/// "2018-11-04 01:00:00 -7200"
std::string shown(const CalendarContext& calendar, Instant at)
{
    const auto time = calendar.civilTime(at);
    char text[48];
    std::snprintf(text, sizeof text, "%s %02d:%02d:%02d %d", time.date.text().c_str(), time.hour, time.minute,
                  time.second, time.secondsFromGMT);
    return text;
}

Interval boundsOf(const CalendarContext& calendar, std::string_view day)
{
    return calendar.boundsOf(calendar.dayOn(date(day)).value());
}

double hoursOf(std::string_view zone, std::string_view day)
{
    return boundsOf(calendarIn(zone), day).length().value / 3600;
}

TEST(CalendarContext, GivesDaysTheirRealLengthWhereClocksChange)
{
    EXPECT_EQ(hoursOf("Europe/Berlin", "2026-03-29"), 23);
    EXPECT_EQ(hoursOf("Europe/Berlin", "2026-10-25"), 25);
    EXPECT_EQ(hoursOf("Australia/Lord_Howe", "2026-04-05"), 24.5);
    EXPECT_EQ(hoursOf("America/Sao_Paulo", "2018-02-17"), 25);
    EXPECT_EQ(hoursOf("America/Havana", "2019-11-03"), 25);
    EXPECT_EQ(hoursOf("Pacific/Apia", "2011-12-29"), 24);
}

TEST(CalendarContext, BeginsADayWithoutMidnightAtItsFirstInstant)
{
    const auto calendar = calendarIn("America/Sao_Paulo");
    const auto start = boundsOf(calendar, "2018-11-04").start;
    EXPECT_EQ(shown(calendar, start), "2018-11-04 01:00:00 -7200");
    EXPECT_EQ(shown(calendar, start - Seconds{1}), "2018-11-03 23:59:59 -10800");
    EXPECT_EQ(calendar.instantOn(date("2018-11-04"), 0, 30, 0), start)
        << "a skipped time is the change's moment";
}

TEST(CalendarContext, BeginsADayWithTwoMidnightsAtTheFirst)
{
    const auto calendar = calendarIn("America/Havana");
    const auto bounds = boundsOf(calendar, "2019-11-03");
    EXPECT_EQ(shown(calendar, bounds.start), "2019-11-03 00:00:00 -14400");
    EXPECT_EQ(shown(calendar, bounds.start + Seconds{3600}), "2019-11-03 00:00:00 -18000");
    const auto first = bounds.start + Seconds{1800};
    EXPECT_EQ(calendar.instantOn(date("2019-11-03"), 0, 30, 0), first);
    EXPECT_EQ(calendar.instantOn(date("2019-11-03"), 0, 30, 0, first), first);
    EXPECT_EQ(calendar.instantOn(date("2019-11-03"), 0, 30, 0, first + Seconds{1}), first + Seconds{3600});
}

TEST(CalendarContext, KeepsTheHourThatShowsTheFormerDateAgainInTheDayThatHasBegun)
{
    const auto calendar = calendarIn("America/St_Johns");
    const auto bounds = boundsOf(calendar, "2010-11-07");
    const Instant change = bounds.start + Seconds{60};
    EXPECT_EQ(shown(calendar, bounds.start), "2010-11-07 00:00:00 -9000");
    EXPECT_EQ(shown(calendar, change), "2010-11-06 23:01:00 -12600");
    EXPECT_EQ(calendar.dateOf(change + Seconds{1800}), date("2010-11-07"));
    EXPECT_EQ(calendar.nextDayStart(bounds.start - Seconds{1}), bounds.start);
    EXPECT_EQ(calendar.instantOn(date("2010-11-06"), 24, 0, 0), bounds.start);
    EXPECT_EQ(bounds.length().value, 25 * 3600);
}

TEST(CalendarContext, CutsNoDayShortWhenMidnightItselfIsSetBack)
{
    const auto calendar = calendarIn("America/Asuncion");
    const auto bounds = boundsOf(calendar, "2024-03-23");
    EXPECT_EQ(bounds.length().value, 25 * 3600);
    EXPECT_EQ(shown(calendar, bounds.end), "2024-03-24 00:00:00 -14400");
    EXPECT_EQ(calendar.dateOf(bounds.end - Seconds{3600}), date("2024-03-23"));
}

TEST(CalendarContext, HasNoDayForADateThatTheZoneSkipped)
{
    const auto calendar = calendarIn("Pacific/Apia");
    EXPECT_FALSE(calendar.dayOn(date("2011-12-30")));
    const auto former = boundsOf(calendar, "2011-12-29");
    EXPECT_EQ(calendar.dateOf(former.end), date("2011-12-31"));
    EXPECT_EQ(calendar.instantOn(date("2011-12-30"), 10, 0, 0), former.end);
}

TEST(CalendarContext, IsExactForFractionsBeforeAndAfterABoundary)
{
    for (const auto* day : {"1969-06-01", "2026-03-29"}) {
        const auto calendar = calendarIn("Europe/Berlin");
        const Instant start = boundsOf(calendar, day).start;
        const Instant before{
            std::nextafter(start.secondsSinceEpoch, -std::numeric_limits<double>::infinity())};
        EXPECT_EQ(calendar.dateOf(before), date(day).plusDays(-1));
        EXPECT_EQ(calendar.nextDayStart(before), start);
        EXPECT_EQ(calendar.dateOf(start), date(day));
        EXPECT_EQ(calendar.dateOf(start + Seconds{0.25}), date(day));
        EXPECT_EQ(calendar.civilTime(before).second, 59);
    }
}

TEST(CalendarContext, LetsDaysFollowEachOtherWithoutHoleOrOverlap)
{
    for (const auto* zone :
         {"Pacific/Apia", "America/St_Johns", "Africa/Cairo", "Asia/Gaza", "Africa/Casablanca",
          "Antarctica/Troll", "Asia/Kathmandu", "Pacific/Kwajalein"}) {
        const auto calendar = calendarIn(zone);
        const auto step = calendarIn(zone);
        Instant at{0.6e9};
        while (at < Instant{1.9e9}) {
            const Instant next = step.nextDayStart(at);
            ASSERT_GT(next, at) << zone;
            const auto day = calendar.dayOf(next);
            ASSERT_EQ(day.start, next) << zone;
            ASSERT_EQ(calendar.boundsOf(day).start, next) << zone;
            ASSERT_EQ(dayFromID(dayID(day)), day) << zone << ' ' << dayID(day);
            ASSERT_EQ(calendar.dayOf(Instant{std::nextafter(next.secondsSinceEpoch, -1e300)}), step.dayOf(at))
                << zone;
            at = next + Seconds{std::fmod(std::abs(next.secondsSinceEpoch), 70000)};
            at = at < step.nextDayStart(next) ? at : next;
        }
    }
}

TEST(CalendarContext, EndsForInstantsNoCalendarReaches)
{
    const auto calendar = calendarIn("Asia/Tokyo");
    const double infinity = std::numeric_limits<double>::infinity();
    for (const double at : {-infinity, -1e300, 1e300, infinity, std::nan("")})
        EXPECT_TRUE(calendar.dateOf({at}).year >= 1 && calendar.dateOf({at}).year <= 9999) << at;
    EXPECT_EQ(calendar.nextDayStart({1e300}), Instant{infinity});
    EXPECT_EQ(calendar.dayOn(date("9999-12-31"))->start + Seconds{86400},
              (Instant{253402300800.0 - 9 * 3600}));
}

TEST(CalendarContext, KnowsTheDatabasesZonesAndNothingElse)
{
    for (const auto* zone : {"UTC", "Etc/GMT+5", "America/Argentina/Buenos_Aires", "EST5EDT"})
        EXPECT_TRUE(CalendarContext::isKnownZone(zone)) << zone;
    for (const auto* name :
         {"", "Europe", "europe/berlin", "../../etc/localtime", ":/etc/localtime", "/usr/share/zoneinfo/UTC",
          "localtime", "posixrules", "UTC0", "Fixed/UTC+01:00", "libc:UTC", "file:UTC", "zone.tab",
          "right/UTC", "Europe/Berlin/", "Europe//Berlin", "CET-1CEST", "Europe/Berlin "})
        EXPECT_FALSE(CalendarContext::isKnownZone(name)) << name;
}

TEST(DayID, NamesADateInAZone)
{
    const auto day = calendarIn("Europe/Berlin").dayOn(date("2026-11-20")).value();
    EXPECT_EQ(dayID(day), "2026-11-20@Europe/Berlin");
    EXPECT_EQ(dayFromID("2026-11-20@Europe/Berlin"), day);
    for (const auto* text : {"2026-11-20", "2026-11-20@", "2026-02-30@UTC", "@UTC", "2011-12-30@Pacific/Apia",
                             "2026-11-20@Mars"})
        EXPECT_FALSE(dayFromID(text)) << text;
    EXPECT_EQ(dayID({day.start, "Europe/Forgotten"}), "2026-11-20@Europe/Forgotten");

    EXPECT_EQ(calendarIn("Asia/Tokyo").boundsOf(day).length().value, 24 * 3600)
        << "a day keeps its own zone's bounds";
}

TEST(CivilDate, ReadsOnlyDatesThatExist)
{
    EXPECT_EQ(date("2028-02-29").plusDays(1).text(), "2028-03-01");
    EXPECT_EQ(date("0001-01-01").text(), "0001-01-01");
    for (const auto* text :
         {"2026-02-29", "2026-13-01", "2026-00-10", "2026-01-00", "0000-01-01", "2026-1-01", "-026-01-01",
          "2026/01/01", "2026-01-01 ", "+026-01-01", "2026--1-01"})
        EXPECT_FALSE(CivilDate::parse(text)) << text;
}

} // namespace
} // namespace stintbook
