#include "Review/ReviewedEditProblem.h"

#include <fmt/format.h>

namespace stintbook {

namespace {

std::string sentence(const TargetCannotReceiveNewWork& target)
{
    return message(target.problem);
}

std::string sentence(ReviewedEditRefusal refusal)
{
    return std::string(message(refusal));
}

std::string sentence(ReviewedItemProblem problem)
{
    return fmt::format("This edit would leave reviewed work that does not hold together ({}), so nothing was "
                       "changed.",
                       rawValue(problem));
}

} // namespace

std::string_view message(ReviewedEditRefusal refusal)
{
    using enum ReviewedEditRefusal;
    switch (refusal) {
    case ignoredItemIsBusinessReadOnly:
        return "Work you marked as not work keeps the client, project, billable state and description it "
               "had, so "
               "restoring it brings back exactly what you set aside. Restore it to work first, then edit it.";
    case splitPointNotInsideInterval:
        return "Choose a time inside the block, not at either end.";
    case splitPointOutsideDay:
        return "A block cannot be split across a day boundary.";
    case mergeRequiresAdjacentIntervals:
        return "Only adjacent blocks with the same client and project can be merged.";
    case mergeRequiresOneDay:
        return "Work in different days cannot be merged.";
    case mergeRejectsStructuralGap:
        return "There is idle time or a capture gap between these, so they are not one stretch of work.";
    case mergeRequiresSameAssignment:
        return "Work with different clients, projects or billable states cannot be merged.";
    case mergeRequiresSameProvenance:
        return "Manual work and observed work cannot be merged.";
    case mergeRejectsIgnoredWork:
        return "Work you marked as not work cannot be merged. Restore it to work first.";
    case mergeWouldDiscardDescription:
        return "Both parts have their own description. Clear one before merging.";
    case mergeRequiresAtLeastTwoItems:
        return "Select two or more adjacent blocks to merge.";
    case workHasNoAssignment:
        return "Assign this work to a client and project before making it structural.";
    case manualWorkOverlapsIncludedWork:
        return "That time is already accounted for. Split, ignore or adjust the existing work first.";
    case manualIntervalInvalid:
        return "Missing work must be a positive interval inside one day.";
    }
    return {};
}

std::string message(const ReviewedEditProblem& problem)
{
    return std::visit([](const auto& kind) { return sentence(kind); }, problem);
}

} // namespace stintbook
