#include "Store/ActivityDataRecords.h"

#include "Store/RecordWriting.h"

namespace stintbook {

namespace {

std::optional<std::string> host(const std::optional<BrowserDomain>& domain)
{
    return domain ? std::optional(domain->host()) : std::nullopt;
}

} // namespace

void write(JsonWriter& json, const ApplicationIdentity& application)
{
    json.object([&] {
        json.member("bundleIdentifier", application.bundleIdentifier);
        json.member("displayName", application.displayName);
    });
}

void write(JsonWriter& json, const FocusedContext& context)
{
    json.object([&] {
        json.member("kind", rawValue(context.kind));
        if (!context.isNone())
            json.member("text", context.text);
    });
}

void write(JsonWriter& json, const ReviewedSourceSlice& slice)
{
    json.object([&] {
        json.member("end", slice.end);
        json.member("segmentID", slice.segmentID);
        json.member("start", slice.start);
    });
}

void write(JsonWriter& json, const ActivitySegment& segment)
{
    json.object([&] {
        recordMember(json, "application", segment.application);
        json.member("browserDomain", host(segment.browserDomain));
        recordMember(json, "context", segment.context);
        json.member("end", segment.end);
        json.member("evidence", rawValue(segment.evidence));
        json.member("gapReason", rawText(segment.gapReason));
        json.member("id", segment.id);
        json.member("kind", rawValue(segment.kind));
        json.member("origin", rawValue(segment.origin));
        json.member("start", segment.start);
        json.member("timeZoneIdentifier", segment.timeZone.identifier);
        json.member("timeZoneSecondsFromGMT", segment.timeZone.secondsFromGMT);
    });
}

void write(JsonWriter& json, SegmentID segmentID, const SegmentReview& review)
{
    json.object([&] {
        recordMember(json, "assignment", review.assignment);
        json.member("isConfirmed", review.isConfirmed);
        json.member("isIgnored", review.isIgnored);
        json.member("segmentID", segmentID);
    });
}

void write(JsonWriter& json, const AttributionAssignment& assignment)
{
    json.object([&] {
        json.member("clientID", assignment.clientID);
        json.member("isBillable", assignment.isBillable);
        json.member("projectID", assignment.projectID);
    });
}

void write(JsonWriter& json, const ReviewedWorkItem& item)
{
    json.object([&] {
        recordMember(json, "assignment", item.assignment);
        json.member("dayID", dayID(item.day));
        json.member("dayStart", item.day.start);
        json.member("description", item.description);
        json.member("disposition", rawValue(item.disposition));
        json.member("end", item.end);
        json.member("id", item.id);
        json.member("origin", rawValue(item.origin));
        recordArray(json, "slices", item.slices);
        json.member("start", item.start);
        json.member("timeZoneIdentifier", item.day.timeZoneIdentifier);
    });
}

void write(JsonWriter& json, const ReviewedDayApproval& approval)
{
    json.object([&] {
        json.member("approvedAt", approval.approvedAt);
        json.member("dayID", dayID(approval.day));
        json.member("dayStart", approval.day.start);
        json.member("revision", approval.revision.value);
        json.member("timeZoneIdentifier", approval.day.timeZoneIdentifier);
    });
}

void write(JsonWriter& json, const ClientReferences& references)
{
    json.object([&] {
        json.member("corrections", references.corrections);
        json.member("exports", references.exports);
        json.member("reviewedItems", references.reviewedItems);
        json.member("rules", references.rules);
    });
}

void write(JsonWriter& json, const Client& client, const std::optional<DirectoryListing>& listing)
{
    json.object([&] {
        if (client.color)
            json.member("colorHex", client.color->hex());
        if (listing)
            json.member("hourlyRate", listing->hourlyRate);
        json.member("id", client.id);
        json.member("isArchived", client.isArchived);
        json.member("name", client.name);
        if (listing) {
            recordMember(json, "references", listing->references);
            json.member("rounding", rawText(listing->rounding));
        }
    });
}

void write(JsonWriter& json, const Project& project, const std::optional<DirectoryListing>& listing)
{
    json.object([&] {
        json.member("clientID", project.clientID);
        json.member("defaultBillable", project.defaultBillable);
        if (listing)
            json.member("hourlyRate", listing->hourlyRate);
        json.member("id", project.id);
        json.member("isArchived", project.isArchived);
        json.member("name", project.name);
        if (listing) {
            recordMember(json, "references", listing->references);
            json.member("rounding", rawText(listing->rounding));
        }
    });
}

void write(JsonWriter& json, const RuleMatch& match)
{
    json.object([&] {
        json.member("applicationBundleIdentifier", match.applicationBundleIdentifier);
        json.member("browserDomain", host(match.browserDomain));
        json.member("titleContains", match.titleContains);
    });
}

void write(JsonWriter& json, const AttributionRule& rule, std::optional<bool> losesConflict)
{
    json.object([&] {
        json.member("billableOverride", rule.billableOverride);
        json.member("clientID", rule.clientID);
        json.member("id", rule.id);
        json.member("isEnabled", rule.isEnabled);
        json.member("losesConflict", losesConflict);
        recordMember(json, "match", rule.match);
        json.member("priority", rule.priority);
        json.member("projectID", rule.projectID);
    });
}

void write(JsonWriter& json, const ExclusionRule& rule)
{
    json.object([&] {
        json.member("id", rule.id);
        json.member("isEnabled", rule.isEnabled);
        recordMember(json, "match", rule.match);
        json.member("priority", rule.priority);
    });
}

} // namespace stintbook
