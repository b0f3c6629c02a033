#pragma once

#include <expected>
#include <string>
#include <string_view>
#include <variant>

#include "Domain/AssignmentDirectory.h"
#include "Review/ReviewedWorkItem.h"

namespace stintbook {

struct TargetCannotReceiveNewWork {
    AssignmentTargetProblem problem;

    friend bool operator==(const TargetCannotReceiveNewWork&, const TargetCannotReceiveNewWork&) = default;
};

enum class ReviewedEditRefusal {
    ignoredItemIsBusinessReadOnly,
    splitPointNotInsideInterval,
    splitPointOutsideDay,
    mergeRequiresAdjacentIntervals,
    mergeRequiresOneDay,
    mergeRejectsStructuralGap,
    mergeRequiresSameAssignment,
    mergeRequiresSameProvenance,
    mergeRejectsIgnoredWork,
    mergeWouldDiscardDescription,
    mergeRequiresAtLeastTwoItems,
    workHasNoAssignment,
    manualWorkOverlapsIncludedWork,
    manualIntervalInvalid,
};

/// Why an edit of reviewed work did not happen. Nothing was changed. A `ReviewedItemProblem` tells that the
/// edit itself would have written an item that breaks an invariant.
using ReviewedEditProblem =
    std::variant<TargetCannotReceiveNewWork, ReviewedEditRefusal, ReviewedItemProblem>;

template <typename T> using Edited = std::expected<T, ReviewedEditProblem>;

std::string_view message(ReviewedEditRefusal refusal);
/// What the user reads.
std::string message(const ReviewedEditProblem& problem);

} // namespace stintbook
