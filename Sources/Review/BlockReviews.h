#pragma once

#include "Review/ReviewedLayerMutation.h"
#include "Review/WorkBlock.h"

namespace stintbook {

/// Writes a change into the reviews of the recorded segments that a block comes from.
template <typename Change>
void changeReviews(const WorkBlock& block, ReviewedLayerMutation& mutation, Change change)
{
    for (const auto& entry : block.lineage) {
        auto review = entry.review;
        change(review);
        mutation.reviewUpserts.insert_or_assign(entry.sourceSegmentID, review);
    }
}

} // namespace stintbook
