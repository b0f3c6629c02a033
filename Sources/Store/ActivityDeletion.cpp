#include "Store/ActivityDeletion.h"

#include <algorithm>
#include <array>
#include <string>

#include "Base/Try.h"
#include "Capture/FreshSegmentID.h"
#include "Store/DeletionMark.h"
#include "Store/ReviewedRecords.h"
#include "Store/RoomForALargeTransaction.h"
#include "Store/SegmentRecords.h"
#include "Store/SegmentReviewRecords.h"

namespace stintbook {

namespace {

/// Of the time that a deletion takes, about this much is its transaction.
constexpr double shareOfTheRecords = 0.8;

std::unexpected<PersistenceError> stopped()
{
    return std::unexpected(deletionStopped());
}

std::vector<LocalDay> recordedDays(StoreConnection& connection, Interval extent,
                                   const CalendarContext& calendar)
{
    std::vector<LocalDay> days;
    auto found = readFirstRecorded(connection, extent.start);
    while (found && *found < extent.end) {
        days.push_back(calendar.dayOf(*found));
        found = readFirstRecorded(connection, calendar.nextDayStart(*found));
    }
    return days;
}

/// What of an interval does not lie in the other one: nothing, or one or two stretches.
std::vector<Interval> outside(Interval whole, Interval hole)
{
    std::vector<Interval> rest;
    for (const auto& stretch : {Interval{whole.start, std::min(whole.end, hole.start)},
                                Interval{std::max(whole.start, hole.end), whole.end}}) {
        if (!stretch.isEmpty())
            rest.push_back(stretch);
    }
    return rest;
}

/// Those that start in the slice and end in the extent.
void deleteSegments(StoreConnection& connection, Interval slice, Interval extent, bool takesReviews)
{
    connection
        .query("DELETE FROM SegmentBrowserDomain WHERE segmentID IN"
               " (SELECT id FROM ActivitySegment WHERE start >= ?1 AND start < ?2 AND \"end\" <= ?3)")
        .bind(slice.start, slice.end, extent.end)
        .run();
    if (takesReviews)
        connection
            .query("DELETE FROM SegmentReview WHERE segmentID IN"
                   " (SELECT id FROM ActivitySegment WHERE start >= ?1 AND start < ?2 AND \"end\" <= ?3)")
            .bind(slice.start, slice.end, extent.end)
            .run();
    connection.query("DELETE FROM ActivitySegment WHERE start >= ?1 AND start < ?2 AND \"end\" <= ?3")
        .bind(slice.start, slice.end, extent.end)
        .run();
}

/// Cuts the segments that cross the extent's bounds, once those within are gone.
Stored<void> cutSegments(StoreConnection& connection, Interval extent)
{
    for (const auto& segment : TRY(readSegments(connection, extent))) {
        const auto reviews = TRY(readReviews(connection, std::vector{segment.id}));
        auto piece = segment;
        for (const auto& rest : outside(segment.interval(), extent)) {
            piece.start = rest.start;
            piece.end = rest.end;
            if (const auto calendar = CalendarContext::inZone(segment.timeZone.identifier))
                piece.timeZone = calendar->stamp(rest.start);
            writeSegment(connection, piece);
            for (const auto& [id, review] : reviews)
                writeReviews(connection, {{piece.id, review}});
            piece.id = freshSegmentID();
        }
    }
    return {};
}

void deleteItems(StoreConnection& connection, Interval extent)
{
#define ITEMS "(SELECT id FROM ReviewedWorkItem WHERE start >= ?1 AND start < ?2 AND \"end\" <= ?2)"
    for (const auto* statement :
         {"DELETE FROM ReviewedDisposition WHERE itemID IN " ITEMS,
          // A cleanup left the reviews of the segments that it took.
          "DELETE FROM SegmentReview WHERE segmentID IN (SELECT segmentID FROM ReviewedSourceSlice WHERE "
          "itemID "
          "IN " ITEMS ") AND NOT EXISTS (SELECT 1 FROM ActivitySegment WHERE id = segmentID)",
          // Its slices go with an item.
          "DELETE FROM ReviewedWorkItem WHERE id IN " ITEMS})
        connection.query(statement).bind(extent.start, extent.end).run();
#undef ITEMS
}

Stored<void> cutItems(StoreConnection& connection, Interval extent)
{
    for (const auto& item : TRY(readItems(connection, extent))) {
        ReviewedLayerMutation mutation;
        auto piece = item;
        for (const auto& rest : outside(item.interval(), extent)) {
            piece.start = rest.start;
            piece.end = rest.end;
            piece.slices.clear();
            for (auto slice : item.slices) {
                slice.start = std::max(slice.start, rest.start);
                slice.end = std::min(slice.end, rest.end);
                if (!slice.interval().isEmpty())
                    piece.slices.push_back(slice);
            }
            mutation.upserts.push_back(piece);
            piece.id = ReviewedItemID::random();
        }
        TRY(applyMutation(connection, mutation));
    }
    return {};
}

/// Those of days within the extent, and of days that lost all of their items to it.
void deleteApprovals(StoreConnection& connection, Interval extent, const CalendarContext& calendar)
{
    // Longer than any day.
    constexpr Seconds twoDays{2 * 86'400.0};
    std::vector<LocalDay> days;
    {
        auto rows = connection.query("SELECT dayStart, dayTimeZoneIdentifier FROM DayReviewApproval"
                                     " WHERE dayStart > ?1 AND dayStart < ?2");
        rows.bind(extent.start - twoDays, extent.end);
        while (rows.next())
            days.push_back({rows.take<Instant>(), rows.take<std::string>()});
    }
    std::erase_if(days, [&](const LocalDay& day) {
        const auto bounds = calendar.boundsOf(day);
        const bool isWithin = extent.start <= bounds.start && bounds.end <= extent.end;
        return !isWithin && (bounds.end <= extent.start || hasItems(connection, day));
    });
    for (const auto& [start, zone] : days)
        connection.query("DELETE FROM DayReviewApproval WHERE dayStart = ?1 AND dayTimeZoneIdentifier = ?2")
            .bind(start, zone)
            .run();
}

/// Day by day, so that one sees how far it is.
Stored<void> deleteDays(StoreConnection& connection, const std::vector<LocalDay>& days, Interval extent,
                        bool takesReviews, const CalendarContext& calendar, const DeletionCourse& course)
{
    double done = 0;
    for (const auto& day : days) {
        if (course.stop.stop_requested())
            return stopped();
        const auto bounds = calendar.boundsOf(day);
        deleteSegments(connection, {std::max(bounds.start, extent.start), std::min(bounds.end, extent.end)},
                       extent, takesReviews);
        if (course.progress)
            course.progress(++done / static_cast<double>(days.size()) * shareOfTheRecords);
    }
    TRY(cutSegments(connection, extent));
    if (!takesReviews)
        return {};
    deleteItems(connection, extent);
    TRY(cutItems(connection, extent));
    deleteApprovals(connection, extent, calendar);
    return {};
}

/// Every record, also one that could not be read, and what belongs to none.
Stored<void> deleteEverything(StoreConnection& connection, const DeletionCourse& course)
{
    constexpr std::array tables{"SegmentBrowserDomain", "SegmentReview",       "ActivitySegment",
                                "ReviewedDisposition",  "ReviewedSourceSlice", "ReviewedWorkItem",
                                "DayReviewApproval"};
    double done = 0;
    for (const auto* table : tables) {
        if (course.stop.stop_requested())
            return stopped();
        connection.execute(std::string("DELETE FROM ") + table);
        if (course.progress)
            course.progress(++done / tables.size() * shareOfTheRecords);
    }
    return {};
}

Stored<void> mark(const StoreDatabase& database, const DeletionMark& mark)
{
    const auto written = writeDeletionMark(database.file(), mark);
    if (written)
        return {};
    return std::unexpected<PersistenceError>(
        StoreFailure{"A file beside the store could not be written (" + written.error() + ")."});
}

} // namespace

Stored<std::vector<LocalDay>> recordedDays(StoreDatabase& database, const ActivityDataScope& scope,
                                           const CalendarContext& calendar)
{
    return database.read([&](StoreConnection& connection) -> Stored<std::vector<LocalDay>> {
        return recordedDays(connection, extent(scope, calendar), calendar);
    });
}

PersistenceError deletionStopped()
{
    return StoreFailure{"The program was ended before that."};
}

Stored<int> deleteActivity(StoreDatabase& database, const ActivityDataScope& scope,
                           const CalendarContext& calendar, const DeletionCourse& course)
{
    const auto bounds = extent(scope, calendar);
    const bool takesReviews = !std::holds_alternative<DaysBefore>(scope);
    const auto& file = database.file();
    // There is one already where the remains of an earlier deletion are not erased yet. It serves both once it says
    // that it was committed; to say so early is harmless, for erasing takes no records.
    if (!file.empty())
        markDeletionCommitted(file);
    const auto earlier = file.empty() ? std::nullopt : readDeletionMark(file);
    if (earlier && !earlier->isCommitted)
        return std::unexpected<PersistenceError>(
            StoreFailure{"What an earlier deletion left beside the store could not be marked."});
    const bool needsMark = !file.empty() && !earlier;
    auto deleted = database.write([&](StoreConnection& connection) -> Stored<int> {
        const auto days = recordedDays(connection, bounds, calendar);
        if (days.empty() && !takesReviews)
            return 0;
        const RoomForALargeTransaction room(connection);
        if (std::holds_alternative<AllHistory>(scope))
            TRY(deleteEverything(connection, course));
        else
            TRY(deleteDays(connection, days, bounds, takesReviews, calendar, course));
        if (course.stop.stop_requested())
            return stopped();
        // The last thing before the commit: found by the next start, it says what to look for.
        if (needsMark)
            TRY(mark(database, {bounds, takesReviews}));
        return static_cast<int>(days.size());
    });
    if (deleted && !file.empty())
        markDeletionCommitted(file);
    else if (needsMark)
        removeDeletionMark(file);
    return deleted;
}

} // namespace stintbook
