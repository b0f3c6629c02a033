#include "Review/SubjectState.h"

namespace stintbook {

SubjectState state(const WorkBlock& block)
{
    if (block.review.isIgnored)
        return SubjectState::ignored;
    if (block.isInUnsettledConflict())
        return SubjectState::conflicting;
    if (!block.effectiveAssignment())
        return SubjectState::unassigned;
    return block.review.assignment ? SubjectState::assignedByHand : SubjectState::assignedByRule;
}

SubjectState state(const ReviewedWorkItem& item)
{
    return item.isIncluded() ? SubjectState::reviewed : SubjectState::ignored;
}

SubjectState state(const ReviewSubject& subject)
{
    return std::visit([](const auto& work) { return state(work); }, subject);
}

} // namespace stintbook
