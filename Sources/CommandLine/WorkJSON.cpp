#include "CommandLine/WorkJSON.h"

#include "Store/ActivityDataRecords.h"
#include "Store/RecordWriting.h"

namespace stintbook {

namespace {

struct DayStanding {
    RecordsDayState recordsState;
    Seconds unreviewedDuration;
};

/// What was recorded; with its standing, the shape that `day list` and `day show` share. In code-point order.
void writeRecordedMembers(JsonWriter& json, const DaySummary& recorded,
                          const std::optional<DayStanding>& standing = std::nullopt)
{
    json.member("dayID", dayID(recorded.day));
    json.member("dayStart", recorded.day.start);
    json.member("gapDuration", recorded.gapDuration);
    json.member("idleDuration", recorded.idleDuration);
    if (standing)
        json.member("recordsState", rawValue(standing->recordsState));
    json.member("reducedContextSegmentCount", recorded.reducedContextSegmentCount);
    json.member("state", rawValue(recorded.state));
    json.member("timeZoneIdentifier", recorded.day.timeZoneIdentifier);
    if (standing)
        json.member("unreviewedDuration", standing->unreviewedDuration);
    json.member("workDuration", recorded.workDuration);
    json.member("workSegmentCount", recorded.workSegmentCount);
}

} // namespace

void write(JsonWriter& json, const AttributionEvaluation& evaluation)
{
    json.object([&] {
        recordMember(json, "assignment", evaluation.assignment);
        json.key("conflictingRuleIDs");
        json.array(evaluation.conflictingRuleIDs, [&](RuleID id) { json.value(id); });
        json.key("supportingRuleIDs");
        json.array(evaluation.supportingRuleIDs, [&](RuleID id) { json.value(id); });
        json.member("winningRuleID", evaluation.winningRuleID);
    });
}

void write(JsonWriter& json, const WorkBlock& block)
{
    json.object([&] {
        json.key("application");
        json.object([&] {
            json.member("bundleIdentifier", block.application.bundleIdentifier);
            json.member("displayName", block.application.displayName);
        });
        recordMember(json, "assignment", block.effectiveAssignment());
        recordMember(json, "attribution", block.attribution);
        json.member("end", block.end);
        json.member("id", block.id);
        json.member("reducedContextSegmentCount", block.reducedContextSegmentCount);
        json.key("review");
        json.object([&] {
            recordMember(json, "assignment", block.review.assignment);
            json.member("isConfirmed", block.review.isConfirmed);
            json.member("isIgnored", block.review.isIgnored);
        });
        json.key("segmentIDs");
        json.array(block.lineage, [&](const WorkBlockSegment& entry) { json.value(entry.segment.id); });
        json.member("start", block.start);
    });
}

void write(JsonWriter& json, const ListedDay& day)
{
    json.object([&] {
        writeRecordedMembers(json, day.summary, DayStanding{day.recordsState, day.unreviewedDuration});
    });
}

void write(JsonWriter& json, const WorkReviewSummary& summary)
{
    json.object([&] {
        json.member("assignedDuration", summary.assignedDuration);
        json.member("blockCount", summary.blockCount);
        json.member("conflictBlockCount", summary.conflictBlockCount);
        json.key("day");
        json.object([&] { writeRecordedMembers(json, summary.day); });
        json.member("observedDuration", summary.observedDuration);
        json.member("unassignedDuration", summary.unassignedDuration);
        json.member("unresolvedBlockCount", summary.unresolvedBlockCount);
        json.member("unresolvedDuration", summary.unresolvedDuration);
    });
}

void write(JsonWriter& json, const ReviewedDayLine& line)
{
    json.object([&] {
        json.member("amount", line.amount);
        json.member("billedSeconds", line.billedSeconds);
        json.member("clientID", line.clientID);
        json.member("clientName", line.clientName);
        json.member("isBillable", line.isBillable);
        json.member("isReviewed", line.isReviewed);
        json.member("projectID", line.projectID);
        json.member("projectName", line.projectName);
        json.member("trackedSeconds", line.trackedSeconds);
    });
}

void write(JsonWriter& json, const ReviewedWorkTotals& totals)
{
    json.object([&] {
        json.key("accountNames");
        json.array(totals.accountNames, [&](const std::string& name) { json.value(name); });
        json.member("amount", totals.amount);
        json.member("billedSeconds", totals.billedSeconds);
        json.member("knownAmount", totals.knownAmount);
        json.member("lineCount", totals.lineCount);
        json.member("trackedSeconds", totals.trackedSeconds);
        json.member("unpricedBillableCount", totals.unpricedBillableCount);
    });
}

void writeMembers(JsonWriter& json, const OpenedDay& day)
{
    json.key("blockers");
    json.array(day.blockers, [&](ReadyToBillBlocker blocker) { json.value(rawValue(blocker)); });
    recordArray(json, "blocks", day.content().blocks);
    json.key("day");
    json.object([&] {
        writeRecordedMembers(json, day.summary.day, DayStanding{day.recordsState, day.unreviewedDuration});
    });
    recordArray(json, "items", day.content().items);
    json.key("itemsWithoutDetails");
    json.array(day.loaded->itemsWithoutDetails, [&](ReviewedItemID id) { json.value(id); });
    recordArray(json, "lines", day.lines);
    json.member("revision", day.revision.value);
    json.member("status", rawValue(day.status));
    recordMember(json, "summary", day.summary);
    recordMember(json, "totals", day.totals);
}

void writeMembers(JsonWriter& json, const EditedWork& work)
{
    recordArray(json, "blocks", work.blocks);
    recordArray(json, "items", work.items);
}

} // namespace stintbook
