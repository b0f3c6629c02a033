#pragma once

#include <map>
#include <optional>
#include <vector>

#include "Review/ReviewedLayerMutation.h"

namespace stintbook {

/// What edits write of one day: all its items, its approval, and the reviews of some segments.
struct ReviewedLayer {
    /// By start, then identifier.
    std::vector<ReviewedWorkItem> items;
    /// The empty review where none is stored.
    std::map<SegmentID, SegmentReview> reviews;
    std::optional<ReviewedDayApproval> approval;

    friend bool operator==(const ReviewedLayer&, const ReviewedLayer&) = default;
};

/// What makes one layer of the other, which tells of the same day and the same segments.
ReviewedLayerMutation difference(const ReviewedLayer& from, const ReviewedLayer& to);

} // namespace stintbook
