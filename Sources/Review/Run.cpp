#include "Review/Run.h"

#include "Review/WorkBlock.h"

namespace stintbook {

bool RunQuestions::isShort(const Run& run) const
{
    return last(run).interval.end - first(run).interval.start < shortestBlock;
}

bool RunQuestions::follows(const Run& earlier, const Run& later) const
{
    return last(earlier).interval.end == first(later).interval.start
        && first(earlier).day == first(later).day;
}

bool RunQuestions::haveEqualReviews(const Run& a, const Run& b) const
{
    return *explaining(a).review == *explaining(b).review;
}

bool RunQuestions::areJoinable(const Run& earlier, const Run& later) const
{
    const auto& a = explaining(earlier);
    const auto& b = explaining(later);
    return follows(earlier, later)
        && earlier.applications.dominant().value_or(unknownApplicationNumber)
        == later.applications.dominant().value_or(unknownApplicationNumber)
        && *a.review == *b.review && a.effectiveAssignment() == b.effectiveAssignment()
        && a.evaluation->assignment == b.evaluation->assignment
        && a.evaluation->isInConflict() == b.evaluation->isInConflict();
}

} // namespace stintbook
