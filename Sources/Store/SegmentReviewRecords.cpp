#include "Store/SegmentReviewRecords.h"

#include "Base/Try.h"
#include "Store/SegmentRecords.h"
#include "Store/StoredFields.h"

namespace stintbook {

namespace {

#define REVIEW_ROWS                                                                                          \
    "SELECT segmentID, assignedClientID, assignedProjectID, assignedBillable, isIgnored, isConfirmed FROM "

Stored<SegmentAndReview> readReview(StoreConnection& /*connection*/, Query& row)
{
    const auto id = row.take<SegmentID>();
    SegmentReview review;
    const auto client = row.take<std::optional<ClientID>>();
    const auto project = row.take<std::optional<ProjectID>>();
    const auto isBillable = row.take<std::optional<bool>>();
    review.isIgnored = row.take<bool>();
    review.isConfirmed = row.take<bool>();
    if (client.has_value() != project.has_value() || client.has_value() != isBillable.has_value())
        return unreadable(id, "review.assignment");
    if (client)
        review.assignment = AttributionAssignment{*client, *project, *isBillable};
    return SegmentAndReview{id, review};
}

} // namespace

Stored<SegmentReviews> readReviews(StoreConnection& connection, std::span<const SegmentID> segments)
{
    SegmentReviews reviews;
    auto row = connection.query(REVIEW_ROWS "SegmentReview WHERE segmentID = ?1");
    for (const auto id : segments) {
        if (row.again().bind(id).next())
            reviews.insert(TRY(readReview(connection, row)));
    }
    return reviews;
}

Stored<SegmentReviews> readReviews(StoreConnection& connection, Interval overlapping)
{
    if (overlapping.isEmpty())
        return {};
    // A crossed join is not reordered: the reviews of all other days are not to be walked through.
    auto rows = connection.query(REVIEW_ROWS "ActivitySegment s CROSS JOIN SegmentReview ON segmentID = s.id"
                                             " WHERE s.start > ?1 AND s.start < ?2 AND s.\"end\" > ?3");
    rows.bind(overlapping.start - longestSegment(connection), overlapping.end, overlapping.start);
    SegmentReviews reviews;
    while (rows.next())
        reviews.insert(TRY(readReview(connection, rows)));
    return reviews;
}

StoredRecords<SegmentAndReview> allReviews(StoreConnection& connection)
{
    return {connection, REVIEW_ROWS "SegmentReview ORDER BY segmentID", readReview};
}

bool insertReviewIfAbsent(StoreConnection& connection, const SegmentAndReview& stored)
{
    const auto& [id, review] = stored;
    const auto& assignment = review.assignment;
    return connection
               .query("INSERT INTO SegmentReview (segmentID, assignedClientID, assignedProjectID,"
                      " assignedBillable, isIgnored, isConfirmed) VALUES (?1, ?2, ?3, ?4, ?5, ?6)"
                      " ON CONFLICT (segmentID) DO NOTHING")
               .bind(id, assignment ? std::optional(assignment->clientID) : std::nullopt,
                     assignment ? std::optional(assignment->projectID) : std::nullopt,
                     assignment ? std::optional(assignment->isBillable) : std::nullopt, review.isIgnored,
                     review.isConfirmed)
               .run()
        > 0;
}

void writeReviews(StoreConnection& connection, const std::map<SegmentID, SegmentReview>& reviews)
{
    for (const auto& [id, review] : reviews) {
        connection.query("DELETE FROM SegmentReview WHERE segmentID = ?1").bind(id).run();
        if (review != SegmentReview{})
            insertReviewIfAbsent(connection, {id, review});
    }
}

} // namespace stintbook
