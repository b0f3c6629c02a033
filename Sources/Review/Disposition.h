#pragma once

#include "Review/EditContext.h"
#include "Review/ReviewedEditProblem.h"
#include "Review/ReviewedLayerMutation.h"

namespace stintbook {

/// Marks work as not work. An item keeps all it has; a block with an effective assignment is frozen as an
/// ignored item; a block without one stays a block, flagged in the reviews of its segments.
Edited<ReviewedLayerMutation> ignore(ReviewSelection selection, const EditContext& context);

/// Gives back exactly what was set aside, also onto time that other work has taken since. Work that is not
/// ignored stays as it is.
ReviewedLayerMutation restore(ReviewSelection selection);

} // namespace stintbook
