#pragma once

#include <QLocale>
#include <QString>
#include <QStringList>
#include <string>
#include <vector>

#include "App/DayBook.h"

/// Days as the strip and the calendar show them.
namespace stintbook {

/// A day of the strip or of the calendar.
struct WeekDayRow {
    /// Its identifier, "2026-11-20@Europe/Berlin".
    std::string id;
    QString name;
    QString number;
    bool isChosen = false;
    bool isToday = false;
    bool isWeekend = false;
    /// Of another month than the calendar shows.
    bool isOutside = false;
    bool hasWork = false;
    /// How much of its work is reviewed, from 0 to 1.
    double reviewed = 0;
    /// "Needs review" and the like; empty without work.
    QString state;

    friend bool operator==(const WeekDayRow&, const WeekDayRow&) = default;
};

/// The days around `chosen` that the strip shows: the week before and its own, as the reader's locale begins weeks.
std::vector<CivilDate> datesOfStrip(CivilDate chosen);
/// The six weeks in which the month lies.
std::vector<CivilDate> datesOfMonth(CivilDate inMonth);
/// The days of a week from Monday on, in as few letters as tell them apart: two where those differ, or else what the
/// locale abbreviates them to at most.
QStringList weekdayMarks(const QLocale& locale);
/// Days that are not in the list have no work.
std::vector<WeekDayRow> weekRows(const std::vector<CivilDate>& dates, CivilDate chosen,
                                 const std::vector<ListedDay>& days, Instant now,
                                 const CalendarContext& calendar);

} // namespace stintbook
