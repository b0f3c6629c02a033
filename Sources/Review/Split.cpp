#include "Review/Split.h"

#include <algorithm>
#include <utility>

#include "Base/Try.h"

namespace stintbook {

namespace {

/// The part of an item, and of its slices, that lies in `interval`.
Edited<ReviewedWorkItem> part(const ReviewedWorkItem& item, Interval interval, const EditContext& context)
{
    auto result = item;
    result.id = {context.freshIdentifier()};
    result.start = interval.start;
    result.end = interval.end;
    std::erase_if(result.slices, [&](const auto& slice) { return !slice.interval().overlaps(interval); });
    for (auto& slice : result.slices) {
        slice.start = std::max(slice.start, interval.start);
        slice.end = std::min(slice.end, interval.end);
    }
    return validated(std::move(result));
}

} // namespace

Edited<ReviewedSplitPlan> planSplit(const StructuralWork& work, Instant at, const EditContext& context)
{
    const auto& item = work.item;
    if (at <= item.start || item.end <= at)
        return std::unexpected(ReviewedEditRefusal::splitPointNotInsideInterval);
    if (!context.calendar.boundsOfDayAt(item.start).contains(at))
        return std::unexpected(ReviewedEditRefusal::splitPointOutsideDay);
    ReviewedSplitPlan plan;
    plan.first = TRY(part(item, {item.start, at}, context));
    plan.second = TRY(part(item, {at, item.end}, context));
    if (work.wasReviewedBefore())
        plan.consumed = item.id;
    return plan;
}

Edited<ReviewedLayerMutation> split(const ReviewSubject& subject, Instant at, const EditContext& context)
{
    auto work = TRY(makeStructural(subject, context));
    auto plan = TRY(planSplit(work, at, context));
    ReviewedLayerMutation mutation;
    mutation.upserts = {std::move(plan.first), std::move(plan.second)};
    if (plan.consumed)
        mutation.deletions = {*plan.consumed};
    mutation.consumedSegmentIDs = std::move(work.consumedSegmentIDs);
    return mutation;
}

} // namespace stintbook
