#include "Review/Disposition.h"

#include "Base/Try.h"
#include "Review/BlockReviews.h"
#include "Review/Freeze.h"

namespace stintbook {

Edited<ReviewedLayerMutation> ignore(ReviewSelection selection, const EditContext& context)
{
    ReviewedLayerMutation mutation;
    for (const auto& subject : withoutRepetitions(selection)) {
        const auto* block = std::get_if<WorkBlock>(&subject);
        if (block && !block->review.isIgnored && !block->effectiveAssignment()) {
            changeReviews(*block, mutation, [](SegmentReview& review) { review.isIgnored = true; });
            continue;
        }
        auto work = TRY(makeStructural(subject, context));
        work.item.disposition = ReviewedItemDisposition::ignored;
        write(std::move(work), mutation);
    }
    return mutation;
}

ReviewedLayerMutation restore(ReviewSelection selection)
{
    ReviewedLayerMutation mutation;
    for (const auto& subject : withoutRepetitions(selection)) {
        if (!isIgnored(subject))
            continue;
        if (const auto* block = std::get_if<WorkBlock>(&subject)) {
            changeReviews(*block, mutation, [](SegmentReview& review) { review.isIgnored = false; });
            continue;
        }
        auto item = std::get<ReviewedWorkItem>(subject);
        item.disposition = ReviewedItemDisposition::included;
        mutation.upserts.push_back(std::move(item));
    }
    return mutation;
}

} // namespace stintbook
