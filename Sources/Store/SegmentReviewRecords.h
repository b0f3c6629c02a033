#pragma once

#include <map>
#include <span>
#include <utility>

#include "Domain/PersistenceError.h"
#include "Review/SegmentReview.h"
#include "Store/StoreConnection.h"
#include "Store/StoredRecords.h"

/// The user's corrections of recorded segments. Callers hold the transaction.
namespace stintbook {

Stored<SegmentReviews> readReviews(StoreConnection& connection, std::span<const SegmentID> segments);
/// Those of the segments that overlap the interval.
Stored<SegmentReviews> readReviews(StoreConnection& connection, Interval overlapping);

using SegmentAndReview = std::pair<SegmentID, SegmentReview>;
/// By the segment's identifier.
StoredRecords<SegmentAndReview> allReviews(StoreConnection& connection);

/// False when the segment has one already. Unlike below, an empty one is kept.
bool insertReviewIfAbsent(StoreConnection& connection, const SegmentAndReview& stored);
/// An empty review removes the record.
void writeReviews(StoreConnection& connection, const std::map<SegmentID, SegmentReview>& reviews);

} // namespace stintbook
