#pragma once

#include <vector>

#include "Review/EditContext.h"
#include "Review/ReviewedEditProblem.h"
#include "Review/ReviewedLayerMutation.h"

namespace stintbook {

/// A subject as an item that can be edited.
struct StructuralWork {
    ReviewedWorkItem item;
    /// The segments of the block that was frozen for it; empty for an item that was reviewed before.
    std::vector<SegmentID> consumedSegmentIDs;

    bool wasReviewedBefore() const { return consumedSegmentIDs.empty(); }
};

/// A block frozen, with its effective assignment, over exactly its interval. Refused when it is ignored, when
/// nothing attributes it, and when its target cannot receive new work.
Edited<StructuralWork> makeStructural(const WorkBlock& block, const EditContext& context);
/// A block frozen, an item as it is. Refused when it is ignored.
Edited<StructuralWork> makeStructural(const ReviewSubject& subject, const EditContext& context);

/// The item, if it keeps every invariant.
Edited<ReviewedWorkItem> validated(ReviewedWorkItem item);

/// Adds the item to what a mutation writes, and its segments to those consumed.
void write(StructuralWork work, ReviewedLayerMutation& mutation);

/// Freezes the selected blocks; items among them stay as they are.
Edited<ReviewedLayerMutation> freeze(ReviewSelection selection, const EditContext& context);

} // namespace stintbook
