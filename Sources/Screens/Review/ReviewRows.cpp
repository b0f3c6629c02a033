#include "Screens/Review/ReviewRows.h"

#include <QObject>
#include <algorithm>
#include <ranges>
#include <span>
#include <string_view>
#include <unordered_set>

#include <fmt/format.h>

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
void setTitles(SubjectRow& row, std::span<const WorkBlockSegment> lineage)
{
    QStringList titles;
    for (const auto& title : workTitles(lineage) | std::views::take(mostTitles + 1))
        titles.append(text(title.text));
    if (row.title.isEmpty() && !titles.isEmpty())
        row.title = titles.takeFirst();
    row.moreTitles = titles.mid(0, mostTitles).join(QStringLiteral("  ·  "));
    if (row.title.isEmpty())
        row.title = row.application;
}

/// What a block and an item have alike.
struct WorkInRow {
    UUID id;
    Interval when;
    SubjectState state;
    std::optional<AttributionAssignment> whom;
    /// Items have one.
    std::optional<std::string> description;
    /// Empty where nothing was recorded.
    std::string application;
    std::span<const WorkBlockSegment> lineage;
};

SubjectRow subjectRow(const WorkInRow& work, const DayView& view)
{
    SubjectRow row;
    row.id = work.id;
    row.subjects = {work.id};
    row.times = timesOf(work.when, view.calendar);
    row.duration = shortDuration(work.when.length());
    row.state = text(rawValue(work.state));
    row.isUnresolved = isUnresolved(work.state);
    row.start = (work.when.start - view.content().bounds.start).value;
    row.end = (work.when.end - view.content().bounds.start).value;
    setWhom(row, work.whom, view.directory());
    row.title = text(work.description.value_or(""));
    row.application = text(work.application);
    setTitles(row, work.lineage);
    if (row.title.isEmpty())
        row.title = row.project;
    return row;
}

SubjectRow blockRow(const WorkBlock& block, const DayView& view)
{
    return subjectRow({block.id,
                       block.interval(),
                       state(block),
                       block.effectiveAssignment(),
                       {},
                       block.application.displayName,
                       block.lineage},
                      view);
}

SubjectRow itemRow(const ReviewedWorkItem& item, const DayView& view)
{
    const auto lineage = view.lineage(item);
    const auto application = lineage.empty() ? std::string() : dominantApplication(lineage).displayName;
    return subjectRow(
        {item.id.uuid, item.interval(), state(item), item.assignment, item.description, application, lineage},
        view);
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
    row.end = (activity.end - view.content().bounds.start).value;
    return row;
}

/// Each text once.
std::string wordsOf(const std::optional<AttributionAssignment>& whom, std::string_view description,
                    std::span<const WorkBlockSegment> lineage, const AssignmentDirectory& directory)
{
    const auto unknown = unknownApplication();
    std::unordered_set<std::string_view> known;
    std::string all;
    const auto add = [&](std::string_view words) {
        if (known.insert(words).second)
            all.append(words).push_back('\n');
    };
    if (const auto* client = whom ? directory.client(whom->clientID) : nullptr)
        add(client->name);
    if (const auto* project = whom ? directory.project(whom->projectID) : nullptr)
        add(project->name);
    add(description);
    for (const auto& entry : lineage) {
        add(entry.segment.context.text);
        add(entry.segment.application ? entry.segment.application->displayName : unknown.displayName);
        if (entry.segment.browserDomain)
            add(entry.segment.browserDomain->host());
    }
    return foldedForSearch(all);
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
    const auto& content = view.content();
    auto brief = briefActivities(content.blocks, content.freeSegments);
    std::vector<SubjectRow> rows;
    std::vector<SubjectRow> members;
    std::size_t activity = 0;
    for (const auto& block : content.blocks) {
        auto row = blockRow(block, view);
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
        rows.push_back(itemRow(item, view));
    std::ranges::stable_sort(rows, {}, &SubjectRow::start);
    return rows;
}

std::vector<SpanRow> spanRows(const DayView& view)
{
    std::vector<SpanRow> rows;
    for (const auto& [segment, source] : view.content().freeSegments) {
        if (segment.kind == ActivityKind::work)
            continue;
        const bool isIdle = segment.kind == ActivityKind::idle;
        rows.push_back({.id = segment.id.uuid,
                        .title = isIdle ? QObject::tr("Idle")
                                        : gapText(segment.gapReason.value_or(GapReason::noObservation)),
                        .times = timesOf(segment.interval(), view.calendar),
                        .duration = shortDuration(segment.length()),
                        .isIdle = isIdle,
                        .start = (segment.start - view.content().bounds.start).value,
                        .end = (segment.end - view.content().bounds.start).value});
    }
    return rows;
}

std::unordered_map<UUID, std::string> searchedWords(const DayView& view)
{
    std::unordered_map<UUID, std::string> words;
    for (const auto& block : view.content().blocks)
        words.emplace(block.id, wordsOf(block.effectiveAssignment(), {}, block.lineage, view.directory()));
    for (const auto& item : view.content().items)
        words.emplace(
            item.id.uuid,
            wordsOf(item.assignment, item.description.value_or(""), view.lineage(item), view.directory()));
    // Of gathered work all of it.
    std::unordered_map<UUID, std::string> rows;
    for (const auto& row : view.subjects) {
        auto& all = rows[row.id];
        for (const auto& id : row.subjects)
            all.append(words.at(id));
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

} // namespace stintbook
