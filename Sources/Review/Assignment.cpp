#include "Review/Assignment.h"

#include <algorithm>

#include "Base/Try.h"
#include "Review/BlockReviews.h"
#include "Review/Freeze.h"
#include "Review/MissingWork.h"

namespace stintbook {

namespace {

Edited<void> mustNotBeIgnored(const std::vector<ReviewSubject>& subjects)
{
    if (std::ranges::any_of(subjects, isIgnored))
        return std::unexpected(ReviewedEditRefusal::ignoredItemIsBusinessReadOnly);
    return {};
}

} // namespace

Edited<ReviewedLayerMutation> assign(ReviewSelection selection, const AttributionAssignment& assignment,
                                     const EditContext& context)
{
    const auto subjects = withoutRepetitions(selection);
    TRY(mustNotBeIgnored(subjects));
    TRY(mustReceiveNewWork(assignment, context));
    ReviewedLayerMutation mutation;
    for (const auto& subject : subjects) {
        if (const auto* block = std::get_if<WorkBlock>(&subject)) {
            changeReviews(*block, mutation, [&](SegmentReview& review) { review.assignment = assignment; });
            continue;
        }
        auto item = std::get<ReviewedWorkItem>(subject);
        item.assignment = assignment;
        mutation.upserts.push_back(std::move(item));
    }
    return mutation;
}

Edited<ReviewedLayerMutation> confirm(ReviewSelection selection, const EditContext& context)
{
    const auto subjects = withoutRepetitions(selection);
    TRY(mustNotBeIgnored(subjects));
    ReviewedLayerMutation mutation;
    for (const auto& subject : subjects) {
        const auto* block = std::get_if<WorkBlock>(&subject);
        if (!block)
            continue;
        const auto& assignment = block->effectiveAssignment();
        if (!assignment)
            return std::unexpected(ReviewedEditRefusal::workHasNoAssignment);
        // What the user assigned before keeps its target, also one archived since.
        if (!block->review.assignment)
            TRY(mustReceiveNewWork(*assignment, context));
        changeReviews(*block, mutation, [&](SegmentReview& review) {
            review.assignment = assignment;
            review.isConfirmed = true;
        });
    }
    return mutation;
}

Edited<ReviewedLayerMutation> describe(const ReviewSubject& subject, const std::string& text,
                                       const EditContext& context)
{
    auto work = TRY(makeStructural(subject, context));
    work.item.description = normalisedDescription(text);
    ReviewedLayerMutation mutation;
    write(std::move(work), mutation);
    return mutation;
}

} // namespace stintbook
