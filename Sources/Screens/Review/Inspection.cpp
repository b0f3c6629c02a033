#include "Screens/Review/Inspection.h"

#include <QObject>
#include <algorithm>
#include <iterator>
#include <optional>
#include <unordered_set>

#include "Rules/RuleExplanation.h"
#include "Screens/Models/Texts.h"

namespace stintbook {

namespace {

/// What all have in common; absent where they differ, or have none.
template <typename T> std::optional<T> common(const std::vector<std::optional<T>>& values)
{
    const bool areAlike = !values.empty()
        && std::ranges::all_of(values, [&](const auto& value) { return value == values.front(); });
    return areAlike ? values.front() : std::nullopt;
}

Qt::CheckState billable(const std::vector<std::optional<AttributionAssignment>>& assignments)
{
    const auto isBillable = [](const auto& assignment) { return assignment && assignment->isBillable; };
    if (std::ranges::none_of(assignments, isBillable))
        return Qt::Unchecked;
    return std::ranges::all_of(assignments, isBillable) ? Qt::Checked : Qt::PartiallyChecked;
}

void setWhom(QVariantMap& values, const std::vector<ReviewSubject>& subjects,
             const AssignmentDirectory& directory)
{
    std::vector<std::optional<AttributionAssignment>> assignments;
    std::vector<std::optional<ClientID>> clients;
    std::vector<std::optional<ProjectID>> projects;
    for (const auto& subject : subjects) {
        const auto assignment = effectiveAssignment(subject);
        assignments.push_back(assignment);
        clients.push_back(assignment ? std::optional(assignment->clientID) : std::nullopt);
        projects.push_back(assignment ? std::optional(assignment->projectID) : std::nullopt);
    }
    values[QStringLiteral("billable")] = billable(assignments);
    if (const auto id = common(clients)) {
        values[QStringLiteral("clientID")] = text(id->uuid);
        if (const auto* client = directory.client(*id)) {
            values[QStringLiteral("client")] = text(client->name);
            values[QStringLiteral("color")] = client->color ? text(client->color->hex()) : QString();
        }
    }
    if (const auto id = common(projects)) {
        values[QStringLiteral("projectID")] = text(id->uuid);
        if (const auto* project = directory.project(*id))
            values[QStringLiteral("project")] = text(project->name);
    }
}

QVariantList shares(const std::vector<WorkBlockSegment>& lineage)
{
    Seconds all;
    const auto applications = applicationShares(lineage);
    for (const auto& share : applications)
        all += share.duration;
    QVariantList shown;
    for (const auto& [application, duration] : applications) {
        shown.append(
            QVariantMap{{QStringLiteral("name"), text(application.displayName)},
                        {QStringLiteral("duration"), shortDuration(duration)},
                        {QStringLiteral("fraction"), all > Seconds{} ? duration.value / all.value : 0}});
    }
    return shown;
}

QVariantMap reason(RuleID id, const QString& role, const DayView& view)
{
    const auto rule = view.rules.find(id);
    QVariantMap shown{{QStringLiteral("ruleID"), text(id.uuid)}, {QStringLiteral("role"), role}};
    if (rule != view.rules.end()) {
        shown[QStringLiteral("text")] = text(conditionsText(rule->second.match));
        shown[QStringLiteral("target")] =
            text(ruleTargetText(rule->second.clientID, rule->second.projectID, view.directory()));
    }
    return shown;
}

/// Why a block is for whom it is for.
void setWhy(QVariantMap& values, const WorkBlock& block, const DayView& view)
{
    const auto& evaluation = block.attribution;
    QString why;
    if (block.review.assignment)
        why = QObject::tr("You assigned this work.");
    else if (block.isInUnsettledConflict())
        why = text(message(ReadyToBillBlocker::conflictedWork));
    else if (evaluation.winningRuleID)
        why = QObject::tr("A rule assigned this work.");
    else
        why = QObject::tr("No rule matches this work.");
    values[QStringLiteral("why")] = why;

    QVariantList reasons;
    if (evaluation.winningRuleID)
        reasons.append(reason(*evaluation.winningRuleID, QObject::tr("Wins"), view));
    for (const auto& id : evaluation.conflictingRuleIDs)
        reasons.append(reason(id, QObject::tr("Disagrees"), view));
    std::vector<RuleMatch> others;
    for (const auto& id : evaluation.supportingRuleIDs) {
        reasons.append(reason(id, QObject::tr("Agrees"), view));
        if (const auto rule = view.rules.find(id); rule != view.rules.end())
            others.push_back(rule->second.match);
    }
    values[QStringLiteral("reasons")] = reasons;
    values[QStringLiteral("alsoMatched")] = text(alsoMatchedText(others));
}

void setOne(QVariantMap& values, const ReviewSubject& subject, const DayView& view)
{
    values[QStringLiteral("subjectID")] = text(identifier(subject));
    values[QStringLiteral("title")] = timesOf(interval(subject), view.calendar);
    values[QStringLiteral("state")] = stateText(state(subject));
    if (const auto* block = std::get_if<WorkBlock>(&subject)) {
        values[QStringLiteral("subtitle")] =
            QObject::tr("%1  ·  %2")
                .arg(shortDuration(interval(subject).length()), text(block->application.displayName));
        setWhy(values, *block, view);
        return;
    }
    const auto& item = std::get<ReviewedWorkItem>(subject);
    values[QStringLiteral("subtitle")] =
        QObject::tr("%1  ·  %2")
            .arg(shortDuration(interval(subject).length()),
                 item.origin == ReviewedItemOrigin::manual ? QObject::tr("Added by hand")
                                                           : QObject::tr("Reviewed"));
    values[QStringLiteral("description")] = text(item.description.value_or(""));
    if (view.day.loaded->itemsWithoutDetails.contains(item.id))
        values[QStringLiteral("note")] = text(detailsRemovedNote);
}

QVariantMap spanValues(const SpanRow& span)
{
    return {{QStringLiteral("kind"), span.isIdle ? QStringLiteral("idle") : QStringLiteral("gap")},
            {QStringLiteral("count"), 1},
            {QStringLiteral("title"), span.times},
            {QStringLiteral("subtitle"), QObject::tr("%1  ·  %2").arg(span.duration, span.title)}};
}

/// By their starts.
std::vector<ReviewSubject> selectedSubjects(const ReviewDay& day, const std::vector<UUID>& selected)
{
    const std::unordered_set<UUID> ids(selected.begin(), selected.end());
    std::vector<ReviewSubject> subjects;
    std::ranges::copy_if(day.blocks, std::back_inserter(subjects),
                         [&](const WorkBlock& block) { return ids.contains(block.id); });
    std::ranges::copy_if(day.items, std::back_inserter(subjects),
                         [&](const ReviewedWorkItem& item) { return ids.contains(item.id.uuid); });
    std::ranges::stable_sort(subjects, {},
                             [](const ReviewSubject& subject) { return interval(subject).start; });
    return subjects;
}

bool canBeConfirmed(const ReviewSubject& subject)
{
    const auto* block = std::get_if<WorkBlock>(&subject);
    return block != nullptr && !block->review.isConfirmed && !block->review.isIgnored
        && block->effectiveAssignment();
}

} // namespace

Inspection inspection(const DayView& view, const std::vector<UUID>& selected)
{
    const auto subjects = selectedSubjects(view.content(), selected);
    if (subjects.empty()) {
        const auto span = selected.empty() ? view.spans.end()
                                           : std::ranges::find(view.spans, selected.front(), &SpanRow::id);
        if (span != view.spans.end())
            return {.values = spanValues(*span), .lineage = {}};
        return {.values = {{QStringLiteral("kind"), QStringLiteral("none")}, {QStringLiteral("count"), 0}},
                .lineage = {}};
    }

    std::vector<WorkBlockSegment> lineage;
    Seconds all;
    for (const auto& subject : subjects) {
        const auto pieces = view.lineage(subject);
        lineage.insert(lineage.end(), pieces.begin(), pieces.end());
        all += interval(subject).length();
    }
    const auto count = static_cast<int>(subjects.size());
    const bool canEdit = std::ranges::none_of(subjects, isIgnored);
    QVariantMap values{
        {QStringLiteral("kind"), QStringLiteral("work")},
        {QStringLiteral("count"), count},
        {QStringLiteral("isIgnored"), std::ranges::all_of(subjects, isIgnored)},
        {QStringLiteral("canAssign"), canEdit},
        {QStringLiteral("canConfirm"), canEdit && std::ranges::any_of(subjects, canBeConfirmed)},
        {QStringLiteral("canSplit"), canEdit && count == 1},
        {QStringLiteral("canDescribe"), canEdit && count == 1},
        {QStringLiteral("canMerge"), canEdit},
        {QStringLiteral("canMakeRule"), count == 1},
        {QStringLiteral("shares"), shares(lineage)}};
    setWhom(values, subjects, view.directory());
    values[QStringLiteral("canSetBillable")] = canEdit && values.contains(QStringLiteral("projectID"));
    if (count == 1) {
        setOne(values, subjects.front(), view);
    } else {
        values[QStringLiteral("title")] = QObject::tr("%1 selected").arg(count);
        values[QStringLiteral("subtitle")] =
            QObject::tr("%1  ·  %2")
                .arg(shortDuration(all),
                     timesOf({interval(subjects.front()).start, interval(subjects.back()).end},
                             view.calendar));
    }
    return {.values = std::move(values), .lineage = lineageRows(lineage, view.calendar)};
}

} // namespace stintbook
