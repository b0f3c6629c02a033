#include "Review/SubjectState.h"

namespace stintbook {

SubjectState state(const ReviewSubject& subject)
{
    if (isIgnored(subject))
        return SubjectState::ignored;
    const auto* block = std::get_if<WorkBlock>(&subject);
    if (block == nullptr)
        return SubjectState::reviewed;
    if (block->isInUnsettledConflict())
        return SubjectState::conflicting;
    if (!block->effectiveAssignment())
        return SubjectState::unassigned;
    return block->review.assignment ? SubjectState::assignedByHand : SubjectState::assignedByRule;
}

} // namespace stintbook
