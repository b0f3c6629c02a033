#include "Review/Freeze.h"

#include "Base/Try.h"

namespace stintbook {

Edited<StructuralWork> makeStructural(const WorkBlock& block, const EditContext& context)
{
    if (block.review.isIgnored)
        return std::unexpected(ReviewedEditRefusal::ignoredItemIsBusinessReadOnly);
    const auto& assignment = block.effectiveAssignment();
    if (!assignment)
        return std::unexpected(ReviewedEditRefusal::workHasNoAssignment);
    TRY(mustReceiveNewWork(*assignment, context));

    std::vector<ReviewedSourceSlice> slices;
    std::vector<SegmentID> consumed;
    for (const auto& [segment, source, evaluation, review] : block.lineage) {
        slices.push_back({.segmentID = source, .start = segment.start, .end = segment.end});
        if (consumed.empty() || consumed.back() != source)
            consumed.push_back(source);
    }
    auto item = TRY(validated({.id = {context.freshIdentifier()},
                               .day = context.day.day,
                               .start = block.start,
                               .end = block.end,
                               .origin = ReviewedItemOrigin::observedReviewed,
                               .assignment = *assignment,
                               .description = std::nullopt,
                               .slices = std::move(slices),
                               .disposition = ReviewedItemDisposition::included}));
    return StructuralWork{.item = std::move(item), .consumedSegmentIDs = std::move(consumed)};
}

Edited<StructuralWork> makeStructural(const ReviewSubject& subject, const EditContext& context)
{
    if (const auto* block = std::get_if<WorkBlock>(&subject))
        return makeStructural(*block, context);
    if (isIgnored(subject))
        return std::unexpected(ReviewedEditRefusal::ignoredItemIsBusinessReadOnly);
    return StructuralWork{.item = std::get<ReviewedWorkItem>(subject), .consumedSegmentIDs = {}};
}

Edited<ReviewedWorkItem> validated(ReviewedWorkItem item)
{
    if (const auto broken = problem(item))
        return std::unexpected(*broken);
    return item;
}

void write(StructuralWork work, ReviewedLayerMutation& mutation)
{
    mutation.upserts.push_back(std::move(work.item));
    auto& consumed = mutation.consumedSegmentIDs;
    consumed.insert(consumed.end(), work.consumedSegmentIDs.begin(), work.consumedSegmentIDs.end());
}

Edited<ReviewedLayerMutation> freeze(ReviewSelection selection, const EditContext& context)
{
    ReviewedLayerMutation mutation;
    for (const auto& subject : withoutRepetitions(selection)) {
        auto work = TRY(makeStructural(subject, context));
        if (!work.wasReviewedBefore())
            write(std::move(work), mutation);
    }
    return mutation;
}

} // namespace stintbook
