#include "Store/ReviewedRecords.h"

#include <limits>

#include <fmt/format.h>

#include "Base/Try.h"
#include "Domain/CalendarContext.h"
#include "Store/SegmentReviewRecords.h"
#include "Store/StoredFields.h"

namespace stintbook {

namespace {

#define ITEM_ROWS                                                                                            \
    "SELECT i.id, i.dayStart, i.dayTimeZoneIdentifier, i.start, i.\"end\", i.originRaw, i.clientID,"         \
    " i.projectID, i.isBillable, i.itemDescription, d.dispositionRaw FROM ReviewedWorkItem i"                \
    " LEFT JOIN ReviewedDisposition d ON d.itemID = i.id"

#define APPROVAL_ROWS                                                                                        \
    "SELECT dayID, dayStart, dayTimeZoneIdentifier, revision, approvedAt FROM DayReviewApproval"

Stored<std::vector<ReviewedSourceSlice>> readSlices(StoreConnection& connection, ReviewedItemID id)
{
    auto rows = connection.query(
        "SELECT segmentID, start, \"end\" FROM ReviewedSourceSlice WHERE itemID = ?1 ORDER BY start, rowid");
    rows.bind(id);
    std::vector<ReviewedSourceSlice> slices;
    while (rows.next()) {
        const ReviewedSourceSlice slice{rows.take<SegmentID>(), rows.take<Instant>(), rows.take<Instant>()};
        if (slice.interval().isEmpty())
            return unreadable(id, "reviewedItem.slices");
        slices.push_back(slice);
    }
    return slices;
}

Stored<ReviewedWorkItem> readItem(StoreConnection& connection, Query& row)
{
    ReviewedWorkItem item;
    item.id = row.take<ReviewedItemID>();
    const auto& id = item.id.uuid;
    item.day.start = row.take<Instant>();
    item.day.timeZoneIdentifier =
        TRY(storedTimeZone(id, "reviewedItem.dayTimeZone", row.take<std::string>()));
    item.start = row.take<Instant>();
    item.end = row.take<Instant>();
    item.origin =
        TRY(storedCase<ReviewedItemOrigin>(id, "reviewedItem.origin", row.take<std::string_view>()));
    item.assignment.clientID = row.take<ClientID>();
    item.assignment.projectID = row.take<ProjectID>();
    item.assignment.isBillable = row.take<bool>();
    item.description = row.take<std::optional<std::string>>();
    item.disposition = TRY(storedCase<ReviewedItemDisposition>(id, "reviewedDisposition",
                                                               row.take<std::optional<std::string>>()))
                           .value_or(ReviewedItemDisposition::included);
    if (item.interval().isEmpty())
        return unreadable(id, "reviewedItem.interval");
    item.slices = TRY(readSlices(connection, item.id));
    return item;
}

#define ALL_APPROVALS APPROVAL_ROWS " ORDER BY dayStart, dayTimeZoneIdentifier"

/// What follows the key in the row.
Stored<ReviewedDayApproval> readApproval(const std::string& key, Query& row)
{
    ReviewedDayApproval approval;
    approval.day.start = row.take<Instant>();
    approval.day.timeZoneIdentifier =
        TRY(storedTimeZone(UUID::random(), "dayApproval.dayTimeZone", row.take<std::string>()));
    approval.revision.value = row.take<std::string>();
    approval.approvedAt = row.take<Instant>();
    if (key != dayID(approval.day))
        return unreadable(UUID::random(), "dayApproval.dayID");
    return approval;
}

KeyedApproval readKeyedApproval(StoreConnection& /*connection*/, Query& row)
{
    auto key = row.take<std::string>();
    auto approval = readApproval(key, row);
    return {std::move(key), std::move(approval)};
}

Stored<ReviewedDayApproval> readApproval(StoreConnection& connection, Query& row)
{
    return readKeyedApproval(connection, row).approval;
}

/// No item is longer, so that one which overlaps an interval starts at most this much before it.
Seconds longestItem(StoreConnection& connection)
{
    auto row = connection.query("SELECT max(\"end\" - start) FROM ReviewedWorkItem");
    row.next();
    return {row.take<std::optional<double>>().value_or(0) + 1};
}

void removeItem(StoreConnection& connection, ReviewedItemID id)
{
    // Its slices go with it.
    connection.query("DELETE FROM ReviewedWorkItem WHERE id = ?1").bind(id).run();
    connection.query("DELETE FROM ReviewedDisposition WHERE itemID = ?1").bind(id).run();
}

} // namespace

Stored<std::vector<ReviewedWorkItem>> readItems(StoreConnection& connection, const LocalDay& day)
{
    return StoredRecords<ReviewedWorkItem>(
               connection,
               ITEM_ROWS " WHERE i.dayStart = ?1 AND i.dayTimeZoneIdentifier = ?2 ORDER BY i.start, i.id",
               readItem, day.start, day.timeZoneIdentifier)
        .collect();
}

Stored<std::vector<ReviewedWorkItem>> readItems(StoreConnection& connection, Interval overlapping)
{
    if (overlapping.isEmpty())
        return {};
    return StoredRecords<ReviewedWorkItem>(
               connection,
               ITEM_ROWS " WHERE i.start > ?1 AND i.start < ?2 AND i.\"end\" > ?3 ORDER BY i.start, i.id",
               readItem, overlapping.start - longestItem(connection), overlapping.end, overlapping.start)
        .collect();
}

bool hasItems(StoreConnection& connection, const LocalDay& day)
{
    auto row = connection.query("SELECT 1 FROM ReviewedWorkItem WHERE dayStart = ?1"
                                " AND dayTimeZoneIdentifier = ?2 LIMIT 1");
    return row.bind(day.start, day.timeZoneIdentifier).next();
}

StoredRecords<ReviewedWorkItem> allItems(StoreConnection& connection)
{
    return {connection, ITEM_ROWS " ORDER BY i.start, i.id", readItem};
}

Stored<std::optional<ReviewedDayApproval>> readApproval(StoreConnection& connection, const LocalDay& day)
{
    auto row = connection.query(APPROVAL_ROWS " WHERE dayStart = ?1 AND dayTimeZoneIdentifier = ?2");
    if (!row.bind(day.start, day.timeZoneIdentifier).next())
        return std::nullopt;
    return TRY(readApproval(connection, row));
}

StoredRecords<ReviewedDayApproval> allApprovals(StoreConnection& connection)
{
    return {connection, ALL_APPROVALS, readApproval};
}

StoredRecords<ReviewedDayApproval, KeyedApproval> allKeyedApprovals(StoreConnection& connection)
{
    return {connection, ALL_APPROVALS, readKeyedApproval};
}

std::vector<LocalDay> readReviewedDays(StoreConnection& connection, const std::optional<Interval>& startingIn)
{
    constexpr double infinity = std::numeric_limits<double>::infinity();
    const auto [from, to] = startingIn.value_or(Interval{{-infinity}, {infinity}});
    auto rows = connection.query("SELECT dayStart, dayTimeZoneIdentifier FROM ReviewedWorkItem"
                                 " WHERE dayStart >= ?1 AND dayStart < ?2"
                                 " UNION SELECT dayStart, dayTimeZoneIdentifier FROM DayReviewApproval"
                                 " WHERE dayStart >= ?1 AND dayStart < ?2 ORDER BY 1, 2");
    rows.bind(from, to);
    std::vector<LocalDay> days;
    while (rows.next())
        days.push_back({rows.take<Instant>(), rows.take<std::string>()});
    return days;
}

bool insertItemIfAbsent(StoreConnection& connection, const ReviewedWorkItem& item)
{
    auto insertion = connection.query(
        "INSERT INTO ReviewedWorkItem (id, dayStart, dayTimeZoneIdentifier, start, \"end\", originRaw,"
        " clientID, projectID, isBillable, itemDescription)"
        " VALUES (?1, ?2, ?3, ?4, ?5, ?6, ?7, ?8, ?9, ?10) ON CONFLICT (id) DO NOTHING");
    insertion.bind(item.id, item.day.start, item.day.timeZoneIdentifier, item.start, item.end, item.origin,
                   item.assignment.clientID, item.assignment.projectID, item.assignment.isBillable,
                   item.description);
    if (insertion.run() == 0)
        return false;
    for (const auto& slice : item.slices)
        connection
            .query(
                "INSERT INTO ReviewedSourceSlice (itemID, segmentID, start, \"end\") VALUES (?1, ?2, ?3, ?4)")
            .bind(item.id, slice.segmentID, slice.start, slice.end)
            .run();
    connection.query("INSERT INTO ReviewedDisposition (itemID, dispositionRaw) VALUES (?1, ?2)")
        .bind(item.id, item.disposition)
        .run();
    return true;
}

void writeApproval(StoreConnection& connection, const ReviewedDayApproval& approval)
{
    connection
        .query("INSERT INTO DayReviewApproval (dayID, dayStart, dayTimeZoneIdentifier, revision, approvedAt)"
               " VALUES (?1, ?2, ?3, ?4, ?5) ON CONFLICT (dayID) DO UPDATE SET dayStart = excluded.dayStart,"
               " dayTimeZoneIdentifier = excluded.dayTimeZoneIdentifier, revision = excluded.revision,"
               " approvedAt = excluded.approvedAt")
        .bind(dayID(approval.day), approval.day.start, approval.day.timeZoneIdentifier,
              approval.revision.value, approval.approvedAt)
        .run();
}

Stored<void> applyMutation(StoreConnection& connection, const ReviewedLayerMutation& mutation)
{
    for (const auto& item : mutation.upserts) {
        if (const auto broken = problem(item))
            return std::unexpected<PersistenceError>(StoreFailure{fmt::format(
                "The reviewed work could not be stored, as it is inconsistent ({}).", rawValue(*broken))});
    }
    for (const auto id : mutation.deletions)
        removeItem(connection, id);
    for (const auto& item : mutation.upserts) {
        removeItem(connection, item.id);
        insertItemIfAbsent(connection, item);
    }
    writeReviews(connection, mutation.reviewUpserts);
    if (mutation.disapproval)
        connection.query("DELETE FROM DayReviewApproval WHERE dayID = ?1")
            .bind(dayID(*mutation.disapproval))
            .run();
    if (mutation.approval)
        writeApproval(connection, *mutation.approval);
    return {};
}

} // namespace stintbook
