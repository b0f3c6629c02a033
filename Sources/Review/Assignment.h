#pragma once

#include <string>

#include "Review/EditContext.h"
#include "Review/ReviewedEditProblem.h"
#include "Review/ReviewedLayerMutation.h"
#include "Rules/AttributionRule.h"

namespace stintbook {

/// Changes the assignment of items, and writes it into the reviews of the segments of blocks, which stay
/// blocks. Refused for ignored work and for a target that cannot receive new work.
Edited<ReviewedLayerMutation> assign(ReviewSelection selection, const AttributionAssignment& assignment,
                                     const EditContext& context);

/// Writes a block's effective assignment, as confirmed, into the reviews of its segments, so that no later
/// rule moves it. Items are the user's decision already and stay as they are. Refused for ignored work and
/// for a block without an effective assignment.
Edited<ReviewedLayerMutation> confirm(ReviewSelection selection, const EditContext& context);

/// Describes an item; an empty text clears its description. A block is frozen first.
Edited<ReviewedLayerMutation> describe(const ReviewSubject& subject, const std::string& text,
                                       const EditContext& context);

} // namespace stintbook
