#include "Review/DaySummary.h"

#include <algorithm>

#include "Review/ReviewSubject.h"

namespace stintbook {

DaySummary daySummary(const LocalDay& day, Interval bounds, std::span<const ActivitySegment> segments)
{
    DaySummary summary{.day = day};
    for (const auto& segment : segments) {
        const Interval inside{std::max(segment.start, bounds.start), std::min(segment.end, bounds.end)};
        if (inside.isEmpty())
            continue;
        switch (segment.kind) {
        case ActivityKind::work:
            summary.workDuration += inside.length();
            ++summary.workSegmentCount;
            if (segment.evidence == ContextEvidence::applicationOnly)
                ++summary.reducedContextSegmentCount;
            summary.state = DayReviewState::needsReview;
            break;
        case ActivityKind::idle:
            summary.idleDuration += inside.length();
            break;
        case ActivityKind::gap:
            summary.gapDuration += inside.length();
            break;
        }
    }
    return summary;
}

WorkReviewSummary workReviewSummary(const DaySummary& recorded, const ReviewDay& reviewed)
{
    WorkReviewSummary summary{.day = recorded, .blockCount = static_cast<int>(reviewed.blocks.size())};
    for (const auto& block : reviewed.blocks) {
        if (block.attribution.isInConflict())
            ++summary.conflictBlockCount;
        if (block.review.isIgnored)
            continue;
        const auto length = block.interval().length();
        const bool isAssigned = block.effectiveAssignment().has_value();
        summary.observedDuration += length;
        (isAssigned ? summary.assignedDuration : summary.unassignedDuration) += length;
        if (!isAssigned || block.isInUnsettledConflict()) {
            summary.unresolvedDuration += length;
            ++summary.unresolvedBlockCount;
        }
    }
    for (const auto& item : reviewed.items) {
        if (!item.isIncluded())
            continue;
        summary.assignedDuration += item.interval().length();
        if (item.origin == ReviewedItemOrigin::observedReviewed)
            summary.observedDuration += item.interval().length();
    }
    return summary;
}

} // namespace stintbook
