#include "Store/ActivityDataReading.h"

#include <cstdlib>

#include <fmt/format.h>

#include "Domain/CalendarContext.h"
#include "Store/RecordReading.h"
#include "Store/SegmentRecords.h"

namespace stintbook {

namespace {

constexpr DayKeys dayKeys{"dayID", "dayStart", "timeZoneIdentifier"};

JsonRead<ClientColor> color(const JsonValue& value)
{
    if (auto color = ClientColor::fromText(TRY(value.text())))
        return *std::move(color);
    return value.problem("is no colour");
}

JsonRead<RuleMatch> match(const JsonValue& value)
{
    auto object = TRY(JsonObject::of(value));
    RuleMatch match;
    match.applicationBundleIdentifier = TRY(object.optional("applicationBundleIdentifier", jsonText));
    match.browserDomain = TRY(object.optional("browserDomain", jsonDomain));
    match.titleContains = TRY(object.optional("titleContains", jsonText));
    TRY(object.mustHoldNothingElse());
    if (match.isEmpty())
        return value.problem("has no condition");
    return match;
}

JsonRead<ApplicationIdentity> application(const JsonValue& value)
{
    auto object = TRY(JsonObject::of(value));
    ApplicationIdentity application;
    application.bundleIdentifier = TRY(object.required("bundleIdentifier", jsonText));
    application.displayName = TRY(object.required("displayName", jsonText));
    TRY(object.mustHoldNothingElse());
    return application;
}

JsonRead<FocusedContext> context(const JsonValue& value)
{
    auto object = TRY(JsonObject::of(value));
    FocusedContext context;
    context.kind = TRY(object.required("kind", jsonCase<FocusedContextKind>));
    auto text = TRY(object.optional("text", jsonText));
    TRY(object.mustHoldNothingElse());
    if (context.isNone() != !text)
        return value.problem(context.isNone() ? "has a text, which its kind has not" : "has no \"text\"");
    context.text = std::move(text).value_or("");
    return context;
}

JsonRead<ReviewedSourceSlice> slice(const JsonValue& value)
{
    auto object = TRY(JsonObject::of(value));
    ReviewedSourceSlice slice;
    slice.end = TRY(object.required("end", jsonInstant));
    slice.segmentID = TRY(object.required("segmentID", jsonIdentifier<SegmentID>));
    slice.start = TRY(object.required("start", jsonInstant));
    TRY(object.mustHoldNothingElse());
    return slice;
}

/// The store takes nothing longer, which is thirty years.
constexpr Seconds longestInterval{1e9};

bool canBeStored(const Interval& interval)
{
    return !interval.isEmpty() && interval.length() < longestInterval;
}

} // namespace

JsonRead<BrowserDomain> jsonDomain(const JsonValue& value)
{
    if (auto domain = BrowserDomain::fromText(TRY(value.text())))
        return *std::move(domain);
    return value.problem("is no host");
}

JsonRead<std::string> jsonTimeZone(const JsonValue& value)
{
    auto identifier = TRY(jsonText(value));
    if (!CalendarContext::isKnownZone(identifier))
        return value.problem(fmt::format("names no known zone: \"{}\"", identifier));
    return identifier;
}

JsonRead<LocalDay> requiredDay(JsonObject& object, const DayKeys& keys)
{
    const auto id = TRY(object.required(keys.id, jsonText));
    LocalDay day;
    day.start = TRY(object.required(keys.start, jsonInstant));
    day.timeZoneIdentifier = TRY(object.required(keys.timeZone, jsonTimeZone));
    if (id != dayID(day))
        return object.problem(keys.id, "is not the day that starts there");
    return day;
}

template <> JsonRead<ActivitySegment> readRecord(const JsonValue& value)
{
    auto object = TRY(JsonObject::of(value));
    ActivitySegment segment;
    segment.application = TRY(object.optional("application", application));
    segment.browserDomain = TRY(object.optional("browserDomain", jsonDomain));
    segment.context = TRY(object.required("context", context));
    segment.end = TRY(object.required("end", jsonInstant));
    segment.evidence = TRY(object.required("evidence", jsonCase<ContextEvidence>));
    segment.gapReason = TRY(object.optional("gapReason", jsonCase<GapReason>));
    segment.id = TRY(object.required("id", jsonIdentifier<SegmentID>));
    segment.kind = TRY(object.required("kind", jsonCase<ActivityKind>));
    segment.origin = TRY(object.required("origin", jsonCase<SegmentOrigin>));
    segment.start = TRY(object.required("start", jsonInstant));
    segment.timeZone.identifier = TRY(object.required("timeZoneIdentifier", jsonText));
    segment.timeZone.secondsFromGMT = TRY(object.required("timeZoneSecondsFromGMT", jsonInteger));
    TRY(object.mustHoldNothingElse());
    if (!canBeStored(segment.interval()))
        return object.problem("end", "does not come after the start");
    if ((segment.kind == ActivityKind::gap) != segment.gapReason.has_value())
        return object.problem("gapReason", "belongs to gaps, and to each of them");
    if (std::abs(segment.timeZone.secondsFromGMT) > longestUTCOffset)
        return object.problem("timeZoneSecondsFromGMT", "is more than a day");
    return segment;
}

template <> JsonRead<AttributionAssignment> readRecord(const JsonValue& value)
{
    auto object = TRY(JsonObject::of(value));
    AttributionAssignment assignment;
    assignment.clientID = TRY(object.required("clientID", jsonIdentifier<ClientID>));
    assignment.isBillable = TRY(object.required("isBillable", jsonFlag));
    assignment.projectID = TRY(object.required("projectID", jsonIdentifier<ProjectID>));
    TRY(object.mustHoldNothingElse());
    return assignment;
}

template <> JsonRead<std::pair<SegmentID, SegmentReview>> readRecord(const JsonValue& value)
{
    auto object = TRY(JsonObject::of(value));
    std::pair<SegmentID, SegmentReview> record;
    auto& [id, review] = record;
    review.assignment = TRY(object.optional("assignment", readRecord<AttributionAssignment>));
    review.isConfirmed = TRY(object.required("isConfirmed", jsonFlag));
    review.isIgnored = TRY(object.required("isIgnored", jsonFlag));
    id = TRY(object.required("segmentID", jsonIdentifier<SegmentID>));
    TRY(object.mustHoldNothingElse());
    return record;
}

template <> JsonRead<ReviewedWorkItem> readRecord(const JsonValue& value)
{
    auto object = TRY(JsonObject::of(value));
    ReviewedWorkItem item;
    item.assignment = TRY(object.required("assignment", readRecord<AttributionAssignment>));
    item.day = TRY(requiredDay(object, dayKeys));
    item.description = TRY(object.optional("description", jsonText));
    item.disposition = TRY(object.required("disposition", jsonCase<ReviewedItemDisposition>));
    item.end = TRY(object.required("end", jsonInstant));
    item.id = TRY(object.required("id", jsonIdentifier<ReviewedItemID>));
    item.origin = TRY(object.required("origin", jsonCase<ReviewedItemOrigin>));
    item.slices = TRY(object.list("slices", slice));
    item.start = TRY(object.required("start", jsonInstant));
    TRY(object.mustHoldNothingElse());
    if (const auto broken = problem(item))
        return value.problem(fmt::format("is inconsistent ({})", rawValue(*broken)));
    return item;
}

template <> JsonRead<ReviewedDayApproval> readRecord(const JsonValue& value)
{
    auto object = TRY(JsonObject::of(value));
    ReviewedDayApproval approval;
    approval.approvedAt = TRY(object.required("approvedAt", jsonInstant));
    approval.day = TRY(requiredDay(object, dayKeys));
    approval.revision.value = TRY(object.required("revision", jsonText));
    TRY(object.mustHoldNothingElse());
    return approval;
}

template <> JsonRead<Client> readRecord(const JsonValue& value)
{
    auto object = TRY(JsonObject::of(value));
    Client client;
    client.color = TRY(object.optional("colorHex", color));
    client.id = TRY(object.required("id", jsonIdentifier<ClientID>));
    client.isArchived = TRY(object.required("isArchived", jsonFlag));
    client.name = TRY(object.required("name", jsonText));
    TRY(object.mustHoldNothingElse());
    return client;
}

template <> JsonRead<Project> readRecord(const JsonValue& value)
{
    auto object = TRY(JsonObject::of(value));
    Project project;
    project.clientID = TRY(object.required("clientID", jsonIdentifier<ClientID>));
    project.defaultBillable = TRY(object.required("defaultBillable", jsonFlag));
    project.id = TRY(object.required("id", jsonIdentifier<ProjectID>));
    project.isArchived = TRY(object.required("isArchived", jsonFlag));
    project.name = TRY(object.required("name", jsonText));
    TRY(object.mustHoldNothingElse());
    return project;
}

template <> JsonRead<AttributionRule> readRecord(const JsonValue& value)
{
    auto object = TRY(JsonObject::of(value));
    AttributionRule rule;
    rule.billableOverride = TRY(object.optional("billableOverride", jsonFlag));
    rule.clientID = TRY(object.required("clientID", jsonIdentifier<ClientID>));
    rule.id = TRY(object.required("id", jsonIdentifier<RuleID>));
    rule.isEnabled = TRY(object.required("isEnabled", jsonFlag));
    rule.match = TRY(object.required("match", match));
    rule.priority = TRY(object.required("priority", jsonInteger));
    rule.projectID = TRY(object.required("projectID", jsonIdentifier<ProjectID>));
    TRY(object.mustHoldNothingElse());
    return rule;
}

template <> JsonRead<ExclusionRule> readRecord(const JsonValue& value)
{
    auto object = TRY(JsonObject::of(value));
    ExclusionRule rule;
    rule.id = TRY(object.required("id", jsonIdentifier<RuleID>));
    rule.isEnabled = TRY(object.required("isEnabled", jsonFlag));
    rule.match = TRY(object.required("match", match));
    rule.priority = TRY(object.required("priority", jsonInteger));
    TRY(object.mustHoldNothingElse());
    return rule;
}

} // namespace stintbook
