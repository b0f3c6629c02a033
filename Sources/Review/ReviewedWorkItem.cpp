#include "Review/ReviewedWorkItem.h"

#include <algorithm>

namespace stintbook {

namespace {

bool crossesItsDay(const ReviewedWorkItem& item)
{
    const auto calendar = CalendarContext::inZone(item.day.timeZoneIdentifier);
    if (!calendar)
        return true;
    const auto bounds = calendar->boundsOf(item.day);
    return item.start < bounds.start || bounds.end < item.end;
}

/// Whether the slices, one after the other, cover the item from its start to its end.
bool cover(const std::vector<ReviewedSourceSlice>& slices, const ReviewedWorkItem& item)
{
    auto covered = item.start;
    for (const auto& slice : slices) {
        if (slice.start != covered)
            return false;
        covered = slice.end;
    }
    return covered == item.end;
}

} // namespace

std::optional<ReviewedItemProblem> problem(const ReviewedWorkItem& item)
{
    const auto isManual = item.origin == ReviewedItemOrigin::manual;
    const auto isEmpty = [](const ReviewedSourceSlice& slice) { return slice.interval().isEmpty(); };
    const auto isOutside = [&](const ReviewedSourceSlice& slice) {
        return slice.start < item.start || item.end < slice.end;
    };

    if (item.interval().isEmpty())
        return ReviewedItemProblem::emptyInterval;
    if (crossesItsDay(item))
        return ReviewedItemProblem::crossesLocalDay;
    if (isManual && !item.slices.empty())
        return ReviewedItemProblem::manualItemHasSlices;
    if (isManual)
        return std::nullopt;
    if (item.slices.empty())
        return ReviewedItemProblem::observedItemHasNoSlices;
    if (std::ranges::any_of(item.slices, isEmpty))
        return ReviewedItemProblem::sliceNotPositive;
    if (std::ranges::any_of(item.slices, isOutside))
        return ReviewedItemProblem::sliceOutsideItem;
    if (!cover(item.slices, item))
        return ReviewedItemProblem::slicesNotContiguous;
    return std::nullopt;
}

} // namespace stintbook
