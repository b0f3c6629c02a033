#include "Screens/Review/WeekRows.h"

#include <QDate>
#include <QSet>
#include <algorithm>

#include "App/RecordsPeriod.h"
#include "Screens/Models/Texts.h"

namespace stintbook {

namespace {

std::vector<CivilDate> datesFrom(CivilDate first, int count)
{
    std::vector<CivilDate> dates;
    for (int day = 0; day < count; ++day)
        dates.push_back(first.plusDays(day));
    return dates;
}

/// The day as this calendar cuts it, or else as it was cut when it was reviewed.
const ListedDay* dayIn(const std::vector<ListedDay>& days, const LocalDay& day, CivilDate date)
{
    auto listed = std::ranges::find(days, day, [](const ListedDay& one) { return one.summary.day; });
    if (listed == days.end())
        listed = std::ranges::find_if(days, [&](const ListedDay& one) {
            return dayID(one.summary.day).starts_with(date.text() + '@');
        });
    return listed == days.end() ? nullptr : &*listed;
}

} // namespace

std::vector<CivilDate> datesOfStrip(CivilDate chosen)
{
    constexpr int daysOfStrip = 14;
    return datesFrom(weekBeginning(chosen, QLocale().firstDayOfWeek()).plusDays(-7), daysOfStrip);
}

std::vector<CivilDate> datesOfMonth(CivilDate inMonth)
{
    constexpr int daysOfCalendar = 42;
    return datesFrom(weekBeginning({inMonth.year, inMonth.month, 1}, QLocale().firstDayOfWeek()),
                     daysOfCalendar);
}

QStringList weekdayMarks(const QLocale& locale)
{
    QStringList marks;
    QStringList letters;
    for (int day = Qt::Monday; day <= Qt::Sunday; ++day) {
        marks.append(locale.dayName(day, QLocale::ShortFormat).left(2));
        letters.append(locale.dayName(day, QLocale::NarrowFormat));
    }
    return QSet(marks.begin(), marks.end()).size() == marks.size() ? marks : letters;
}

std::vector<WeekDayRow> weekRows(const std::vector<CivilDate>& dates, CivilDate chosen,
                                 const std::vector<ListedDay>& days, Instant now,
                                 const CalendarContext& calendar)
{
    const QLocale locale;
    const auto weekdays = locale.weekdays();
    const auto names = weekdayMarks(locale);
    const auto today = calendar.dateOf(now);
    std::vector<WeekDayRow> rows;
    for (const auto date : dates) {
        const auto day = calendar.dayOn(date);
        if (!day)
            continue;
        const auto qdate = dateOf(date);
        const auto* listed = dayIn(days, *day, date);
        WeekDayRow row{.id = dayID(listed == nullptr ? *day : listed->summary.day),
                       .name = names[qdate.dayOfWeek() - 1],
                       .number = locale.toString(date.day),
                       .isChosen = date == chosen,
                       .isToday = date == today,
                       .isWeekend = !weekdays.contains(static_cast<Qt::DayOfWeek>(qdate.dayOfWeek())),
                       .isOutside = date.month != dates[dates.size() / 2].month};
        if (listed != nullptr) {
            const auto work = listed->summary.workDuration.value;
            row.hasWork = work > 0 || listed->hasReviewedWork;
            row.reviewed = work > 0 ? std::clamp(1 - listed->unreviewedDuration.value / work, 0.0, 1.0) : 1;
            row.state = row.hasWork ? text(label(listed->recordsState)) : QString();
        }
        rows.push_back(std::move(row));
    }
    return rows;
}

} // namespace stintbook
