#pragma once

#include <map>
#include <optional>
#include <vector>

#include "Review/ReviewedDayApproval.h"
#include "Review/ReviewedWorkItem.h"
#include "Review/SegmentReview.h"

namespace stintbook {

/// The result of every edit, applied by the store in one transaction.
struct ReviewedLayerMutation {
    /// Inserted, or replaced by identifier.
    std::vector<ReviewedWorkItem> upserts;
    std::vector<ReviewedItemID> deletions;
    std::map<SegmentID, SegmentReview> reviewUpserts;
    /// Segments whose time is now covered by reviewed items.
    std::vector<SegmentID> consumedSegmentIDs;
    std::optional<ReviewedDayApproval> approval;
    /// The day that is not approved any more.
    std::optional<LocalDay> disapproval = std::nullopt;

    friend bool operator==(const ReviewedLayerMutation&, const ReviewedLayerMutation&) = default;
};

} // namespace stintbook
