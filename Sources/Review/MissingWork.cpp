#include "Review/MissingWork.h"

#include <algorithm>

#include "Base/Try.h"
#include "Review/Freeze.h"

namespace stintbook {

namespace {

bool lieInside(Interval interval, Interval bounds)
{
    return bounds.start <= interval.start && interval.end <= bounds.end;
}

} // namespace

Edited<ReviewedLayerMutation> addMissingWork(const ManualWorkDraft& draft, const EditContext& context)
{
    using enum ReviewedEditRefusal;
    const auto time = draft.interval();
    if (time.isEmpty() || !lieInside(time, context.day.bounds))
        return std::unexpected(manualIntervalInvalid);
    const auto overlaps = [&](Interval taken) { return taken.overlaps(time); };
    if (std::ranges::any_of(context.day.includedTime(), overlaps))
        return std::unexpected(manualWorkOverlapsIncludedWork);
    if (!draft.clientID || !draft.projectID)
        return std::unexpected(workHasNoAssignment);
    const AttributionAssignment assignment{*draft.clientID, *draft.projectID, draft.billable};
    TRY(mustReceiveNewWork(assignment, context));

    ReviewedLayerMutation mutation;
    mutation.upserts.push_back(TRY(validated({
        .id = {context.freshIdentifier()},
        .day = context.day.day,
        .start = draft.start,
        .end = draft.end,
        .origin = ReviewedItemOrigin::manual,
        .assignment = assignment,
        .description = normalisedDescription(draft.description),
        .slices = {},
        .disposition = ReviewedItemDisposition::included,
    })));
    return mutation;
}

std::optional<Interval> idleTime(SegmentID segment, const ReviewDay& day)
{
    const auto found = std::ranges::find_if(day.freeSegments, [&](const FreeSegment& free) {
        return free.sourceSegmentID == segment && free.segment.kind == ActivityKind::idle;
    });
    if (found == day.freeSegments.end())
        return std::nullopt;
    return found->segment.interval();
}

std::optional<std::string> normalisedDescription(std::optional<std::string> text)
{
    return text && text->empty() ? std::nullopt : std::move(text);
}

} // namespace stintbook
