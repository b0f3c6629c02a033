#include "Store/SegmentRecords.h"

#include <algorithm>
#include <cstdlib>

#include "Base/Try.h"
#include "Domain/SegmentOrder.h"
#include "Store/StoredFields.h"

namespace stintbook {

namespace {

#define SEGMENT_ROWS                                                                                         \
    "SELECT s.id, s.start, s.\"end\", s.kindRaw, s.gapReasonRaw, s.bundleIdentifier, s.applicationName,"     \
    " s.contextKindRaw, s.contextTitle, s.evidenceRaw, s.originRaw, s.timeZoneIdentifier,"                   \
    " s.utcOffsetSeconds, d.host"                                                                            \
    " FROM ActivitySegment s LEFT JOIN SegmentBrowserDomain d ON d.segmentID = s.id"

Stored<std::optional<ApplicationIdentity>> application(SegmentID id,
                                                       std::optional<std::string> bundleIdentifier,
                                                       std::optional<std::string> name)
{
    if (!bundleIdentifier && name)
        return unreadable(id, "segment.application");
    if (!bundleIdentifier)
        return std::nullopt;
    return ApplicationIdentity{std::move(*bundleIdentifier),
                               std::move(name).value_or(unknownApplicationName)};
}

Stored<FocusedContext> context(SegmentID id, std::optional<std::string_view> kind,
                               std::optional<std::string> title)
{
    const auto known = TRY(storedCase<FocusedContextKind>(id.uuid, "segment.context", kind))
                           .value_or(FocusedContextKind::none);
    if ((known == FocusedContextKind::none) != !title)
        return unreadable(id, "segment.context");
    return FocusedContext{known, std::move(title).value_or("")};
}

Stored<ActivitySegment> readSegment(StoreConnection& /*connection*/, Query& row)
{
    ActivitySegment segment;
    segment.id = row.take<SegmentID>();
    segment.start = row.take<Instant>();
    segment.end = row.take<Instant>();
    const auto& id = segment.id.uuid;
    segment.kind = TRY(storedCase<ActivityKind>(id, "segment.kind", row.take<std::string_view>()));
    segment.gapReason =
        TRY(storedCase<GapReason>(id, "segment.gapReason", row.take<std::optional<std::string_view>>()));
    auto bundleIdentifier = row.take<std::optional<std::string>>();
    segment.application =
        TRY(application(segment.id, std::move(bundleIdentifier), row.take<std::optional<std::string>>()));
    const auto contextKind = row.take<std::optional<std::string_view>>();
    segment.context = TRY(context(segment.id, contextKind, row.take<std::optional<std::string>>()));
    segment.evidence = TRY(storedCase<ContextEvidence>(id, "segment.evidence", row.take<std::string_view>()));
    segment.origin = TRY(storedCase<SegmentOrigin>(id, "segment.origin", row.take<std::string_view>()));
    segment.timeZone.identifier = row.take<std::string>();
    segment.timeZone.secondsFromGMT = row.take<int>();
    segment.browserDomain =
        TRY(storedDomain(id, "segment.browserDomain", row.take<std::optional<std::string_view>>()));

    if (!segment.start.isFinite() || !segment.end.isFinite() || !(segment.start < segment.end))
        return unreadable(id, "segment.interval");
    if ((segment.kind == ActivityKind::gap) != segment.gapReason.has_value())
        return unreadable(id, "segment.gapReason");
    if (std::abs(segment.timeZone.secondsFromGMT) > longestUTCOffset)
        return unreadable(id, "segment.timeZone");
    return segment;
}

Query& bindSegment(Query& query, const ActivitySegment& segment)
{
    const auto& [kind, text] = segment.context;
    const bool hasContext = kind != FocusedContextKind::none;
    return query.bind(
        segment.id, segment.start, segment.end, segment.kind, segment.gapReason,
        segment.application ? std::optional(segment.application->bundleIdentifier) : std::nullopt,
        segment.application ? std::optional(segment.application->displayName) : std::nullopt,
        hasContext ? std::optional(kind) : std::nullopt, hasContext ? std::optional(text) : std::nullopt,
        segment.evidence, segment.origin, segment.timeZone.identifier, segment.timeZone.secondsFromGMT);
}

void writeDomain(StoreConnection& connection, const ActivitySegment& segment)
{
    if (segment.browserDomain)
        connection.query("INSERT INTO SegmentBrowserDomain (segmentID, host) VALUES (?1, ?2)")
            .bind(segment.id, segment.browserDomain->host())
            .run();
}

} // namespace

bool insertSegmentIfAbsent(StoreConnection& connection, const ActivitySegment& segment)
{
    auto insertion = connection.query(
        "INSERT INTO ActivitySegment (id, start, \"end\", kindRaw, gapReasonRaw, bundleIdentifier, "
        "applicationName,"
        " contextKindRaw, contextTitle, evidenceRaw, originRaw, timeZoneIdentifier, utcOffsetSeconds)"
        " VALUES (?1, ?2, ?3, ?4, ?5, ?6, ?7, ?8, ?9, ?10, ?11, ?12, ?13) ON CONFLICT (id) DO NOTHING");
    if (bindSegment(insertion, segment).run() == 0)
        return false;
    writeDomain(connection, segment);
    return true;
}

void writeSegment(StoreConnection& connection, const ActivitySegment& segment)
{
    if (insertSegmentIfAbsent(connection, segment))
        return;
    auto update = connection.query(
        "UPDATE ActivitySegment SET start = ?2, \"end\" = ?3, kindRaw = ?4, gapReasonRaw = ?5,"
        " bundleIdentifier = ?6, applicationName = ?7, contextKindRaw = ?8, contextTitle = ?9, evidenceRaw = "
        "?10,"
        " originRaw = ?11, timeZoneIdentifier = ?12, utcOffsetSeconds = ?13 WHERE id = ?1");
    bindSegment(update, segment).run();
    connection.query("DELETE FROM SegmentBrowserDomain WHERE segmentID = ?1").bind(segment.id).run();
    writeDomain(connection, segment);
}

Seconds longestSegment(StoreConnection& connection)
{
    // The index holds segments above 900 seconds only; the second more outweighs any rounding.
    auto row =
        connection.query("SELECT max(\"end\" - start) FROM ActivitySegment WHERE \"end\" - start > 900");
    row.next();
    return {row.take<std::optional<double>>().value_or(900) + 1};
}

Stored<std::vector<ActivitySegment>> readSegments(StoreConnection& connection, Interval overlapping)
{
    if (overlapping.isEmpty())
        return {};
    auto segments = TRY(
        StoredRecords<ActivitySegment>(connection,
                                       SEGMENT_ROWS " WHERE s.start > ?1 AND s.start < ?2 AND s.\"end\" > ?3"
                                                    " ORDER BY s.start",
                                       readSegment, overlapping.start - longestSegment(connection),
                                       overlapping.end, overlapping.start)
            .collect());
    // Starts come in order out of the index; the database would sort whole rows for the few that are equal.
    sortBySegments(segments);
    return segments;
}

std::optional<Instant> readFirstRecorded(StoreConnection& connection, Instant from)
{
    auto row = connection.query("SELECT start FROM ActivitySegment WHERE start > ?1 AND \"end\" > ?2"
                                " ORDER BY start LIMIT 1");
    row.bind(from - longestSegment(connection), from);
    if (!row.next())
        return std::nullopt;
    return std::max(row.take<Instant>(), from);
}

StoredRecords<ActivitySegment> allSegments(StoreConnection& connection)
{
    return {connection, SEGMENT_ROWS " ORDER BY s.start, s.\"end\", s.id", readSegment};
}

Stored<std::optional<ActivitySegment>> readLatestSegment(StoreConnection& connection)
{
    auto row = connection.query(SEGMENT_ROWS " ORDER BY s.start DESC, s.\"end\" DESC, s.id DESC LIMIT 1");
    if (!row.next())
        return std::nullopt;
    return TRY(readSegment(connection, row));
}

std::optional<Interval> readRecordedTime(StoreConnection& connection)
{
    auto bounds =
        connection.query("SELECT (SELECT min(start) FROM ActivitySegment), max(start) FROM ActivitySegment");
    bounds.next();
    const auto first = bounds.take<std::optional<Instant>>();
    const auto last = bounds.take<std::optional<Instant>>();
    if (!first || !last)
        return std::nullopt;
    // The segment that ends last need not be the one that starts last.
    auto end = connection.query("SELECT max(\"end\") FROM ActivitySegment WHERE start >= ?1");
    end.bind(*last - longestSegment(connection)).next();
    return Interval{*first, end.take<Instant>()};
}

std::vector<ObservedApplication> readObservedApplications(StoreConnection& connection)
{
    // From one application to the next through the index, instead of over every segment.
    auto rows = connection.query(
        "WITH RECURSIVE application (id) AS ("
        " SELECT min(bundleIdentifier) FROM ActivitySegment"
        " UNION ALL"
        " SELECT (SELECT min(bundleIdentifier) FROM ActivitySegment WHERE bundleIdentifier > application.id)"
        " FROM application WHERE application.id IS NOT NULL)"
        " SELECT bundleIdentifier, applicationName, \"end\" FROM application JOIN ActivitySegment s ON "
        "s.rowid ="
        " (SELECT rowid FROM ActivitySegment WHERE bundleIdentifier = application.id"
        " ORDER BY \"end\" DESC LIMIT 1)"
        " WHERE application.id IS NOT NULL ORDER BY bundleIdentifier");
    std::vector<ObservedApplication> applications;
    while (rows.next()) {
        auto& application = applications.emplace_back();
        application.bundleIdentifier = rows.take<std::string>();
        application.displayName = rows.take<std::optional<std::string>>().value_or(unknownApplicationName);
        application.lastSeen = rows.take<Instant>();
    }
    return applications;
}

} // namespace stintbook
