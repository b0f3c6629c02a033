#pragma once

#include <QColor>
#include <QString>

#include "App/DayBook.h"
#include "Base/Identifier.h"
#include "Domain/AssignmentDirectory.h"

/// A day as its screen shows it: texts and numbers, made away from the window's thread.
namespace stintbook {

/// A block or an item.
struct SubjectRow {
    UUID id;
    QString title;
    /// "08:35 – 08:39".
    QString times;
    QString duration;
    QString application;
    /// Empty without an assignment.
    QString client;
    QString project;
    /// "#RRGGBB", or empty where the client has none.
    QString color;
    /// A raw value of `SubjectState`.
    QString state;
    bool isUnresolved = false;
    /// Seconds since the day's beginning.
    double start = 0;
    double end = 0;
    /// What a search looks into: titles, domains, description, application.
    QString words;

    friend bool operator==(const SubjectRow&, const SubjectRow&) = default;
};

/// Idle time, or time without a record.
struct SpanRow {
    UUID id;
    /// "Idle" and the like, with its times.
    QString title;
    bool isIdle = false;
    double start = 0;
    double end = 0;

    friend bool operator==(const SpanRow&, const SpanRow&) = default;
};

/// A day of the strip above.
struct WeekDayRow {
    /// Its identifier, "2026-11-20@Europe/Berlin".
    std::string id;
    QString name;
    QString number;
    bool isChosen = false;
    bool isToday = false;
    bool isWeekend = false;
    bool hasWork = false;
    /// How much of its work is reviewed, from 0 to 1.
    double reviewed = 0;
    /// A raw value of `RecordsDayState`; empty without work.
    QString state;

    friend bool operator==(const WeekDayRow&, const WeekDayRow&) = default;
};

std::vector<SubjectRow> subjectRows(const ReviewDay& day, const AssignmentDirectory& directory,
                                    const CalendarContext& calendar);
std::vector<SpanRow> spanRows(const ReviewDay& day, const CalendarContext& calendar);
/// The days around `chosen` that a strip shows: its week and the one after, as the reader's locale begins weeks.
std::vector<CivilDate> datesOfStrip(CivilDate chosen);
std::vector<WeekDayRow> weekRows(CivilDate chosen, const std::vector<ListedDay>& days, Instant now,
                                 const CalendarContext& calendar);

} // namespace stintbook
