#pragma once

#include "Review/EditContext.h"
#include "Review/ReviewedEditProblem.h"
#include "Review/ReviewedLayerMutation.h"

namespace stintbook {

/// Makes one item of two or more subjects that follow each other without a gap and agree in all that is
/// billed. Blocks among them are frozen, once everything else is known to fit. The first subject's item
/// becomes the merged one; the others are deleted.
Edited<ReviewedLayerMutation> merge(ReviewSelection selection, const EditContext& context);

} // namespace stintbook
