#include "Review/Merge.h"

#include <algorithm>
#include <functional>
#include <ranges>
#include <utility>

#include "Base/Try.h"
#include "Review/Freeze.h"

namespace stintbook {

namespace {

using Subjects = std::vector<ReviewSubject>;

ReviewedItemOrigin origin(const ReviewSubject& subject)
{
    const auto* item = std::get_if<ReviewedWorkItem>(&subject);
    return item ? item->origin : ReviewedItemOrigin::observedReviewed;
}

bool hasDescription(const ReviewSubject& subject)
{
    const auto* item = std::get_if<ReviewedWorkItem>(&subject);
    return item && item->description && !item->description->empty();
}

bool holdsIdleTimeOrGap(const ReviewDay& day, Interval space)
{
    return std::ranges::any_of(day.freeSegments, [&](const FreeSegment& free) {
        return free.segment.kind != ActivityKind::work && free.segment.interval().overlaps(space);
    });
}

Edited<void> mustFollow(Interval earlier, Interval later, const EditContext& context)
{
    using enum ReviewedEditRefusal;
    if (!context.calendar.boundsOfDayAt(earlier.start).contains(later.start))
        return std::unexpected(mergeRequiresOneDay);
    if (earlier.end == later.start)
        return {};
    const Interval space{earlier.end, later.start};
    if (!space.isEmpty() && holdsIdleTimeOrGap(context.day, space))
        return std::unexpected(mergeRejectsStructuralGap);
    return std::unexpected(mergeRequiresAdjacentIntervals);
}

template <typename Property> bool differ(const Subjects& subjects, Property property)
{
    return std::ranges::adjacent_find(subjects, std::not_equal_to{}, property) != subjects.end();
}

/// The subjects are in order of time.
Edited<void> mustMerge(const Subjects& subjects, const EditContext& context)
{
    using enum ReviewedEditRefusal;
    for (std::size_t later = 1; later < subjects.size(); ++later)
        TRY(mustFollow(interval(subjects[later - 1]), interval(subjects[later]), context));
    if (std::ranges::any_of(subjects, isIgnored))
        return std::unexpected(mergeRejectsIgnoredWork);
    if (differ(subjects, origin))
        return std::unexpected(mergeRequiresSameProvenance);
    if (differ(subjects, effectiveAssignment))
        return std::unexpected(mergeRequiresSameAssignment);
    if (std::ranges::count_if(subjects, hasDescription) > 1)
        return std::unexpected(mergeWouldDiscardDescription);
    return {};
}

} // namespace

Edited<ReviewedLayerMutation> merge(ReviewSelection selection, const EditContext& context)
{
    auto subjects = withoutRepetitions(selection);
    if (subjects.size() < 2)
        return std::unexpected(ReviewedEditRefusal::mergeRequiresAtLeastTwoItems);
    std::ranges::stable_sort(subjects, {}, [](const auto& subject) { return interval(subject).start; });
    TRY(mustMerge(subjects, context));

    ReviewedLayerMutation mutation;
    auto merged = TRY(makeStructural(subjects.front(), context));
    for (const auto& subject : subjects | std::views::drop(1)) {
        const auto next = TRY(makeStructural(subject, context));
        auto& item = merged.item;
        item.end = next.item.end;
        item.slices.insert(item.slices.end(), next.item.slices.begin(), next.item.slices.end());
        if (hasDescription(subject))
            item.description = next.item.description;
        if (next.wasReviewedBefore())
            mutation.deletions.push_back(next.item.id);
        auto& consumed = merged.consumedSegmentIDs;
        consumed.insert(consumed.end(), next.consumedSegmentIDs.begin(), next.consumedSegmentIDs.end());
    }
    merged.item = TRY(validated(std::move(merged.item)));
    write(std::move(merged), mutation);
    return mutation;
}

} // namespace stintbook
