#pragma once

#include <map>
#include <span>

#include "Domain/PersistenceError.h"
#include "Review/SegmentReview.h"
#include "Store/RecordWalk.h"
#include "Store/StoreConnection.h"

/// The user's corrections of recorded segments. Callers hold the transaction.
namespace stintbook {

Stored<SegmentReviews> readReviews(StoreConnection& connection, std::span<const SegmentID> segments);
/// By the segment's identifier.
void walkReviews(StoreConnection& connection,
                 const RecordVisitor<std::pair<SegmentID, SegmentReview>>& visit);
Stored<std::map<SegmentID, SegmentReview>> readAllReviews(StoreConnection& connection);
/// An empty review removes the record.
void writeReviews(StoreConnection& connection, const std::map<SegmentID, SegmentReview>& reviews);

} // namespace stintbook
