#include "Screens/Review/ReviewRows.h"

#include <QDate>
#include <QLocale>
#include <QStringList>
#include <algorithm>

#include "Review/SubjectState.h"
#include "Review/WorkTitles.h"
#include "Screens/Models/Texts.h"

namespace stintbook {

namespace {

void setWhom(SubjectRow& row, const std::optional<AttributionAssignment>& assignment,
             const AssignmentDirectory& directory)
{
    if (!assignment)
        return;
    if (const auto* client = directory.client(assignment->clientID)) {
        row.client = text(client->name);
        row.color = client->color ? text(client->color->hex()) : QString();
    }
    if (const auto* project = directory.project(assignment->projectID))
        row.project = text(project->name);
}

/// A block's title is the one of most of its time.
void describe(SubjectRow& row, const WorkBlock& block)
{
    row.application = text(block.application.displayName);
    const auto titles = workTitles(block.lineage);
    row.title = titles.empty() ? row.application : text(titles.front().text);
    QStringList words{row.application};
    for (const auto& title : titles)
        words.append(text(title.text));
    for (const auto& entry : block.lineage) {
        if (entry.segment.browserDomain)
            words.append(text(entry.segment.browserDomain->host()));
    }
    words.removeDuplicates();
    row.words = words.join(QLatin1Char('\n'));
}

void describe(SubjectRow& row, const ReviewedWorkItem& item)
{
    row.title = text(item.description.value_or(""));
    row.words = row.title;
}

} // namespace

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
        row.state = text(rawValue(how));
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
            row.state = text(rawValue(listed->recordsState));
        }
        rows.push_back(std::move(row));
    }
    return rows;
}

} // namespace stintbook
