#pragma once

#include <limits>
#include <optional>
#include <string>
#include <string_view>

#include <absl/time/time.h>

#include "Base/Instant.h"
#include "Domain/LocalDay.h"

namespace stintbook {

/// The zone stamped on one segment.
struct SegmentTimeZone {
    std::string identifier;
    /// The zone's offset from GMT in seconds at the segment's start, east positive.
    int secondsFromGMT = 0;

    friend bool operator==(const SegmentTimeZone&, const SegmentTimeZone&) = default;
};

/// A civil reading of an instant in some zone.
struct CivilTime {
    CivilDate date;
    int hour = 0;
    int minute = 0;
    int second = 0;
    int secondsFromGMT = 0;
};

/// The Gregorian calendar in one time zone: what cuts time into days.
///
/// A day begins at the first instant of its date, also where midnight does not exist or comes twice, and
/// lasts until the next day begins; so days follow each other without hole or overlap, and the day of an
/// instant is the latest one that has begun, even where a clock that is set back shows the former date
/// again. A date that the zone never had (skipped whole) has no day.
/// The years 1 to 9999 are covered: an earlier instant counts to their first day, a later one to their
/// last, which never ends.
///
/// A value; it remembers the bounds of the day it was last asked for, so that the common question costs
/// two comparisons. Copies are independent; one value is not for two threads at once.
class CalendarContext {
public:
    /// Absent when the system knows no zone of that name.
    static std::optional<CalendarContext> inZone(std::string_view timeZoneIdentifier);
    /// `TZ` where it names a zone, else the system's zone (/etc/localtime), else UTC.
    static CalendarContext system();
    static bool isKnownZone(std::string_view timeZoneIdentifier);

    const std::string& timeZoneIdentifier() const { return m_identifier; }

    LocalDay dayOf(Instant at) const;
    /// The first instant of the day after the one that holds `at`.
    Instant nextDayStart(Instant at) const;
    /// [start of the day, start of the next), in the day's own zone where the system knows it.
    Interval boundsOf(const LocalDay& day) const;
    Interval boundsOfDayAt(Instant at) const;

    /// Absent when the zone never had that date.
    std::optional<LocalDay> dayOn(CivilDate date) const;
    /// The date that names the day of an instant.
    CivilDate dateOf(Instant at) const;

    int secondsFromGMT(Instant at) const;
    SegmentTimeZone stamp(Instant at) const { return {m_identifier, secondsFromGMT(at)}; }
    CivilTime civilTime(Instant at) const;

    /// The instant at which a clock in this zone shows the given time on that date: the first of two unless that
    /// lies before `notBefore`, and the moment of the change for a time that was skipped. 24:00:00 is the day's end.
    Instant instantOn(CivilDate date, int hour, int minute, int second,
                      Instant notBefore = {-std::numeric_limits<double>::infinity()}) const;

    /// Calendars are equal when they cut alike: by zone.
    friend bool operator==(const CalendarContext& a, const CalendarContext& b)
    {
        return a.m_identifier == b.m_identifier;
    }

private:
    CalendarContext(std::string identifier, absl::TimeZone zone);
    Instant startOf(CivilDate date) const;

    std::string m_identifier;
    absl::TimeZone m_zone;
    mutable Interval m_lastBounds;
    mutable CivilDate m_lastDate;
};

/// A day's identifier: its date and its zone, "2026-11-20@Europe/Berlin".
std::string dayID(const LocalDay& day);
/// The day that an identifier names; absent when it names none.
std::optional<LocalDay> dayFromID(std::string_view dayID);

} // namespace stintbook
