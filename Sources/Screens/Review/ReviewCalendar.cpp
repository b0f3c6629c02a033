#include "Screens/Review/ReviewCalendar.h"

#include <QLocale>
#include <algorithm>
#include <utility>

#include "App/DayBook.h"
#include "Screens/Models/Texts.h"

namespace stintbook {

namespace {

std::vector<RowModel<WeekDayRow>::Role> dayRoles()
{
    using Rows = RowModel<WeekDayRow>;
    return {Rows::role("dayID", &WeekDayRow::id),
            Rows::role("name", &WeekDayRow::name),
            Rows::role("number", &WeekDayRow::number),
            Rows::role("isChosen", &WeekDayRow::isChosen),
            Rows::role("isToday", &WeekDayRow::isToday),
            Rows::role("isWeekend", &WeekDayRow::isWeekend),
            Rows::role("isOutside", &WeekDayRow::isOutside),
            Rows::role("hasWork", &WeekDayRow::hasWork),
            Rows::role("reviewed", &WeekDayRow::reviewed),
            Rows::role("state", &WeekDayRow::state)};
}

Stored<std::vector<ListedDay>> listed(const DayBook& book, const std::vector<CivilDate>& dates)
{
    return book.list(book.calendar().dayOn(dates.front()), book.calendar().dayOn(dates.back()));
}

} // namespace

ReviewCalendar::ReviewCalendar(const ScreenContext& context, QObject* parent)
    : QObject(parent)
    , m_context(context)
    , m_today(context.calendar().dateOf(context.clock.now()))
    , m_week(dayRoles())
    , m_month(dayRoles())
{
}

void ReviewCalendar::choose(CivilDate date)
{
    m_date = date;
    readWeek();
}

void ReviewCalendar::tick()
{
    if (std::exchange(m_today, m_context.calendar().dateOf(m_context.clock.now())) != m_today)
        readWeek();
}

void ReviewCalendar::readWeek()
{
    const auto dates = datesOfStrip(m_date);
    m_context.readings.ask(
        this,
        [dates, calendar = m_context.calendar()](StoreDesk::Workplace& place) {
            return listed(DayBook(place.store, calendar, &place.session), dates);
        },
        [this, dates](const Stored<std::vector<ListedDay>>& days) {
            if (days && dates == datesOfStrip(m_date))
                m_week.show(weekRows(dates, m_date, *days, m_context.clock.now(), m_context.calendar()));
        },
        [](const std::string&) {});
}

QStringList ReviewCalendar::weekdays()
{
    const QLocale locale;
    auto marks = weekdayMarks(locale);
    std::ranges::rotate(marks, marks.begin() + (locale.firstDayOfWeek() - Qt::Monday));
    return marks;
}

QString ReviewCalendar::monthTitle() const
{
    return QLocale().toString(dateOf(m_shownMonth), QStringLiteral("MMMM yyyy"));
}

void ReviewCalendar::showMonth()
{
    m_shownMonth = {m_date.year, m_date.month, 1};
    readMonth();
}

void ReviewCalendar::moveMonth(int months)
{
    const auto moved = dateOf(m_shownMonth).addMonths(months);
    m_shownMonth = {moved.year(), moved.month(), 1};
    readMonth();
}

void ReviewCalendar::readMonth()
{
    Q_EMIT monthChanged();
    const auto dates = datesOfMonth(m_shownMonth);
    const auto showDays = [this, dates](const std::vector<ListedDay>& days) {
        m_month.show(weekRows(dates, m_date, days, m_context.clock.now(), m_context.calendar()));
    };
    showDays({});
    m_context.readings.ask(
        this,
        [dates, calendar = m_context.calendar()](StoreDesk::Workplace& place) {
            return listed(DayBook(place.store, calendar, &place.session), dates);
        },
        [this, dates, showDays](const Stored<std::vector<ListedDay>>& days) {
            if (days && dates == datesOfMonth(m_shownMonth))
                showDays(*days);
        },
        [](const std::string&) {});
}

} // namespace stintbook
