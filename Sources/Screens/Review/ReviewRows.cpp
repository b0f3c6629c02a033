#include "Screens/Review/ReviewRows.h"

#include <QDate>
#include <QLocale>
#include <QObject>
#include <algorithm>
#include <ranges>

#include <fmt/format.h>

#include "App/RecordsPeriod.h"
#include "Base/Text.h"
#include "Review/BriefActivity.h"
#include "Review/WorkTitles.h"
#include "Screens/Models/Texts.h"
#include "Screens/Review/DayView.h"

namespace stintbook {

namespace {

constexpr std::size_t mostTitles = 4;

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

/// What the work was, from its record: the title of most of its time goes first.
void setWhat(SubjectRow& row, const std::vector<WorkBlockSegment>& lineage, QStringList& words)
{
    if (lineage.empty())
        return;
    row.application = text(dominantApplication(lineage).displayName);
    words.append(row.application);
    QStringList titles;
    for (const auto& title : workTitles(lineage))
        titles.append(text(title.text));
    words += titles;
    for (const auto& entry : lineage) {
        if (entry.segment.browserDomain)
            words.append(text(entry.segment.browserDomain->host()));
    }
    if (row.title.isEmpty() && !titles.isEmpty())
        row.title = titles.takeFirst();
    row.moreTitles = titles.mid(0, mostTitles).join(QStringLiteral("  ·  "));
    if (row.title.isEmpty())
        row.title = row.application;
}

SubjectRow subjectRow(const ReviewSubject& subject, const DayView& view)
{
    const auto when = interval(subject);
    const auto how = state(subject);
    SubjectRow row;
    row.id = identifier(subject);
    row.subjects = {row.id};
    row.times = timesOf(when, view.calendar);
    row.duration = shortDuration(when.length());
    row.state = text(rawValue(how));
    row.isUnresolved = isUnresolved(how);
    row.start = (when.start - view.day.content.bounds.start).value;
    row.end = (when.end - view.day.content.bounds.start).value;
    setWhom(row, effectiveAssignment(subject), view.directory);
    QStringList words{row.client, row.project};
    if (const auto* item = std::get_if<ReviewedWorkItem>(&subject)) {
        row.title = text(item->description.value_or(""));
        words.append(row.title);
    }
    setWhat(row, view.lineage(subject), words);
    if (row.title.isEmpty())
        row.title = row.project;
    words.removeDuplicates();
    row.words = foldedForSearch(words.join(QLatin1Char('\n')).toStdString());
    return row;
}

/// The rows of blocks that one brief activity gathers, as one.
SubjectRow gathered(const BriefActivity& activity, const std::vector<SubjectRow>& members,
                    const DayView& view)
{
    SubjectRow row = members.front();
    QStringList titles;
    for (const auto& member : members) {
        titles.append(member.title);
        if (&member == &members.front())
            continue;
        row.subjects.insert(row.subjects.end(), member.subjects.begin(), member.subjects.end());
        row.words += '\n' + member.words;
        if (member.client != row.client || member.project != row.project) {
            row.client = QObject::tr("Several");
            row.project.clear();
            row.color.clear();
        }
        if (member.isUnresolved && !row.isUnresolved)
            row.state = member.state;
        row.isUnresolved = row.isUnresolved || member.isUnresolved;
        if (member.application != row.application)
            row.application = QObject::tr("Several applications");
    }
    titles.removeDuplicates();
    if (members.size() > 1)
        row.id = activity.id;
    row.title = QObject::tr("Brief activity · %1").arg(titles.first());
    row.moreTitles = titles.mid(1, mostTitles).join(QStringLiteral("  ·  "));
    row.times = timesOf(activity.interval(), view.calendar);
    row.duration = shortDuration(activity.interval().length());
    row.end = (activity.end - view.day.content.bounds.start).value;
    return row;
}

QString gapText(GapReason reason)
{
    switch (reason) {
    case GapReason::capturePaused:
        return QObject::tr("Recording paused");
    case GapReason::captureStopped:
        return QObject::tr("Not running");
    case GapReason::systemSleep:
        return QObject::tr("Asleep");
    case GapReason::sessionInactive:
        return QObject::tr("Session locked");
    case GapReason::noObservation:
        return QObject::tr("Not recorded");
    }
    return {};
}

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

QString stateText(SubjectState state)
{
    switch (state) {
    case SubjectState::reviewed:
        return QObject::tr("Reviewed");
    case SubjectState::ignored:
        return QObject::tr("Not work");
    case SubjectState::conflicting:
        return QObject::tr("Rules disagree");
    case SubjectState::unassigned:
        return QObject::tr("Unassigned");
    case SubjectState::assignedByHand:
        return QObject::tr("Assigned by hand");
    case SubjectState::assignedByRule:
        return QObject::tr("Assigned by rule");
    }
    return {};
}

std::vector<RowModel<SubjectRow>::Role> subjectRoles()
{
    using Rows = RowModel<SubjectRow>;
    return {Rows::role("subjectID", &SubjectRow::id),
            Rows::role("title", &SubjectRow::title),
            Rows::role("moreTitles", &SubjectRow::moreTitles),
            Rows::role("times", &SubjectRow::times),
            Rows::role("duration", &SubjectRow::duration),
            Rows::role("application", &SubjectRow::application),
            Rows::role("client", &SubjectRow::client),
            Rows::role("project", &SubjectRow::project),
            Rows::role("clientColor", &SubjectRow::color),
            Rows::role("state", &SubjectRow::state),
            {"stateText",
             [](const SubjectRow& row) {
                 const auto state = fromRawValue<SubjectState>(row.state.toStdString());
                 return state ? stateText(*state) : QString();
             }},
            Rows::role("isUnresolved", &SubjectRow::isUnresolved),
            Rows::role("start", &SubjectRow::start),
            Rows::role("end", &SubjectRow::end)};
}

std::vector<SubjectRow> subjectRows(const DayView& view)
{
    const auto& content = view.day.content;
    auto brief = briefActivities(content.blocks, content.freeSegments);
    std::vector<SubjectRow> rows;
    std::vector<SubjectRow> members;
    std::size_t activity = 0;
    for (const auto& block : content.blocks) {
        auto row = subjectRow(block, view);
        if (activity >= brief.size() || block.start < brief[activity].start) {
            rows.push_back(std::move(row));
            continue;
        }
        members.push_back(std::move(row));
        if (block.end >= brief[activity].end) {
            rows.push_back(gathered(brief[activity], members, view));
            members.clear();
            ++activity;
        }
    }
    for (const auto& item : content.items)
        rows.push_back(subjectRow(item, view));
    std::ranges::stable_sort(rows, {}, &SubjectRow::start);
    return rows;
}

std::vector<SpanRow> spanRows(const DayView& view)
{
    std::vector<SpanRow> rows;
    for (const auto& [segment, source] : view.day.content.freeSegments) {
        if (segment.kind == ActivityKind::work)
            continue;
        const bool isIdle = segment.kind == ActivityKind::idle;
        rows.push_back({.id = segment.id.uuid,
                        .title = isIdle ? QObject::tr("Idle")
                                        : gapText(segment.gapReason.value_or(GapReason::noObservation)),
                        .times = timesOf(segment.interval(), view.calendar),
                        .duration = shortDuration(segment.length()),
                        .isIdle = isIdle,
                        .start = (segment.start - view.day.content.bounds.start).value,
                        .end = (segment.end - view.day.content.bounds.start).value});
    }
    return rows;
}

std::vector<LineageRow> lineageRows(const std::vector<WorkBlockSegment>& lineage,
                                    const CalendarContext& calendar)
{
    std::vector<LineageRow> rows;
    rows.reserve(lineage.size());
    for (const auto& [segment, source, evaluation, review] : lineage) {
        rows.push_back(
            {.id = fmt::format("{}@{}", source.uuid.upperCaseText(), segment.start.secondsSinceEpoch),
             .times = timesOf(segment.interval(), calendar),
             .duration = shortDuration(segment.length()),
             .application = text(segment.application ? segment.application->displayName
                                                     : unknownApplication().displayName),
             .title = text(segment.context.text),
             .domain = segment.browserDomain ? text(segment.browserDomain->host()) : QString()});
    }
    return rows;
}

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

std::vector<WeekDayRow> weekRows(const std::vector<CivilDate>& dates, CivilDate chosen,
                                 const std::vector<ListedDay>& days, Instant now,
                                 const CalendarContext& calendar)
{
    const QLocale locale;
    const auto weekdays = locale.weekdays();
    const auto today = calendar.dateOf(now);
    std::vector<WeekDayRow> rows;
    for (const auto date : dates) {
        const auto day = calendar.dayOn(date);
        if (!day)
            continue;
        const auto qdate = dateOf(date);
        const auto* listed = dayIn(days, *day, date);
        WeekDayRow row{.id = dayID(listed == nullptr ? *day : listed->summary.day),
                       .name = locale.dayName(qdate.dayOfWeek(), QLocale::ShortFormat).left(2),
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
