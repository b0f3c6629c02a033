#pragma once

#include <optional>

#include "Review/EditContext.h"
#include "Review/Freeze.h"
#include "Review/ReviewedEditProblem.h"
#include "Review/ReviewedLayerMutation.h"

namespace stintbook {

/// The two items that replace one.
struct ReviewedSplitPlan {
    ReviewedWorkItem first;
    ReviewedWorkItem second;
    /// The item to be deleted; absent when what is split was a block until now.
    std::optional<ReviewedItemID> consumed;
};

/// Cuts an item, and its slices, in two. Both parts keep everything but their times.
Edited<ReviewedSplitPlan> planSplit(const StructuralWork& work, Instant at, const EditContext& context);

/// A block is frozen first.
Edited<ReviewedLayerMutation> split(const ReviewSubject& subject, Instant at, const EditContext& context);

} // namespace stintbook
