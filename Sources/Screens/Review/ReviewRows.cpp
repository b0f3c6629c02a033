#include "Screens/Review/ReviewRows.h"

#include <QDate>
#include <QDateTime>
#include <QLocale>
#include <QStringList>
#include <algorithm>
#include <cmath>

#include "Review/SubjectState.h"
#include "Review/WorkTitles.h"

namespace stintbook {

namespace {

QString timeOf(Instant at, const CalendarContext& calendar)
{
    const auto civil = calendar.civilTime(at);
    // The C locale writes seconds, which tell nothing here.
    const auto format = QLocale().timeFormat(QLocale::ShortFormat).remove(QStringLiteral(":ss"));
    return QLocale().toString(QTime(civil.hour, civil.minute), format);
}

QString timesOf(Interval interval, const CalendarContext& calendar)
{
    return timeOf(interval.start, calendar) + QStringLiteral(" – ") + timeOf(interval.end, calendar);
}

void setWhom(SubjectRow& row, const std::optional<AttributionAssignment>& assignment,
             const AssignmentDirectory& directory)
{
    if (!assignment)
        return;
    if (const auto* client = directory.client(assignment->clientID)) {
        row.client = QString::fromStdString(client->name);
        row.color = client->color ? QString::fromStdString(client->color->hex()) : QString();
    }
    if (const auto* project = directory.project(assignment->projectID))
        row.project = QString::fromStdString(project->name);
}

/// A block's title is the one of most of its time.
void describe(SubjectRow& row, const WorkBlock& block)
{
    row.application = QString::fromStdString(block.application.displayName);
    const auto titles = workTitles(block.lineage);
    row.title = titles.empty() ? row.application : QString::fromStdString(titles.front().text);
    QStringList words{row.application};
    for (const auto& title : titles)
        words.append(QString::fromStdString(title.text));
    for (const auto& entry : block.lineage) {
        if (entry.segment.browserDomain)
            words.append(QString::fromStdString(entry.segment.browserDomain->host()));
    }
    words.removeDuplicates();
    row.words = words.join(QLatin1Char('\n'));
}

void describe(SubjectRow& row, const ReviewedWorkItem& item)
{
    row.title = QString::fromStdString(item.description.value_or(""));
    row.words = row.title;
}

QDate dateOf(CivilDate date)
{
    return {date.year, date.month, date.day};
}

} // namespace

QString shortDuration(Seconds length)
{
    const auto seconds = static_cast<qint64>(std::llround(length.value));
    if (seconds < 60)
        return QObject::tr("%1 s").arg(seconds);
    const auto minutes = (seconds + 30) / 60;
    if (minutes < 60)
        return QObject::tr("%1 min").arg(minutes);
    return minutes % 60 == 0 ? QObject::tr("%1 h").arg(minutes / 60)
                             : QObject::tr("%1 h %2 min").arg(minutes / 60).arg(minutes % 60);
}

std::vector<SubjectRow> subjectRows(const ReviewDay& day, const AssignmentDirectory& directory,
                                    const CalendarContext& calendar)
{
    std::vector<ReviewSubject> subjects(day.blocks.begin(), day.blocks.end());
    subjects.insert(subjects.end(), day.items.begin(), day.items.end());
    std::ranges::stable_sort(subjects, {},
                             [](const ReviewSubject& subject) { return interval(subject).start; });

    std::vector<SubjectRow> rows;
    rows.reserve(subjects.size());
    for (const auto& subject : subjects) {
        const auto when = interval(subject);
        const auto how = state(subject);
        auto& row = rows.emplace_back();
        row.id = identifier(subject);
        row.times = timesOf(when, calendar);
        row.duration = shortDuration(when.length());
        row.state = QString::fromUtf8(rawValue(how));
        row.isUnresolved = isUnresolved(how);
        row.start = (when.start - day.bounds.start).value;
        row.end = (when.end - day.bounds.start).value;
        setWhom(row, effectiveAssignment(subject), directory);
        std::visit([&](const auto& one) { describe(row, one); }, subject);
        if (row.title.isEmpty())
            row.title = row.project;
    }
    return rows;
}

std::vector<SpanRow> spanRows(const ReviewDay& day, const CalendarContext& calendar)
{
    std::vector<SpanRow> rows;
    for (const auto& [segment, source] : day.freeSegments) {
        if (segment.kind == ActivityKind::work)
            continue;
        const bool isIdle = segment.kind == ActivityKind::idle;
        rows.push_back({.id = segment.id.uuid,
                        .title = (isIdle ? QObject::tr("Idle") : QObject::tr("Not recorded"))
                            + QLatin1Char(' ') + timesOf(segment.interval(), calendar),
                        .isIdle = isIdle,
                        .start = (segment.start - day.bounds.start).value,
                        .end = (segment.end - day.bounds.start).value});
    }
    return rows;
}

std::vector<CivilDate> datesOfStrip(CivilDate chosen)
{
    constexpr int daysOfStrip = 14;
    const auto weekday = dateOf(chosen).dayOfWeek();
    const int sinceWeekBegan = (weekday - QLocale().firstDayOfWeek() + 7) % 7;
    std::vector<CivilDate> dates;
    for (int day = 0; day < daysOfStrip; ++day)
        dates.push_back(chosen.plusDays(day - sinceWeekBegan - 7));
    return dates;
}

std::vector<WeekDayRow> weekRows(CivilDate chosen, const std::vector<ListedDay>& days, Instant now,
                                 const CalendarContext& calendar)
{
    const QLocale locale;
    const auto weekdays = locale.weekdays();
    const auto today = calendar.dateOf(now);
    std::vector<WeekDayRow> rows;
    for (const auto date : datesOfStrip(chosen)) {
        const auto day = calendar.dayOn(date);
        if (!day)
            continue;
        const auto qdate = dateOf(date);
        WeekDayRow row{.id = dayID(*day),
                       .name = locale.dayName(qdate.dayOfWeek(), QLocale::ShortFormat).left(2),
                       .number = locale.toString(date.day),
                       .isChosen = date == chosen,
                       .isToday = date == today,
                       .isWeekend = !weekdays.contains(static_cast<Qt::DayOfWeek>(qdate.dayOfWeek()))};
        const auto listed =
            std::ranges::find(days, *day, [](const ListedDay& one) { return one.summary.day; });
        if (listed != days.end()) {
            const auto work = listed->summary.workDuration.value;
            row.hasWork = work > 0 || listed->hasReviewedWork;
            row.reviewed = work > 0 ? std::clamp(1 - listed->unreviewedDuration.value / work, 0.0, 1.0) : 1;
            row.state = QString::fromUtf8(rawValue(listed->recordsState));
        }
        rows.push_back(std::move(row));
    }
    return rows;
}

} // namespace stintbook
