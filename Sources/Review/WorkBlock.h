#pragma once

#include <optional>
#include <span>
#include <vector>

#include "Base/Identifier.h"
#include "Domain/ActivitySegment.h"
#include "Review/SegmentReview.h"
#include "Rules/AttributionRule.h"

namespace stintbook {

/// One piece of recorded work as blocks see it.
struct WorkBlockSegment {
    /// The stored segment, or the piece of it that is free; a piece has an identifier of its own.
    ActivitySegment segment;
    /// The stored segment that it came from.
    SegmentID sourceSegmentID;
    AttributionEvaluation evaluation;
    SegmentReview review;

    /// The review's assignment, else the rules'.
    const std::optional<AttributionAssignment>& effectiveAssignment() const
    {
        return review.assignment ? review.assignment : evaluation.assignment;
    }

    friend bool operator==(const WorkBlockSegment&, const WorkBlockSegment&) = default;
};

/// What is shorter does not stand as a block of its own where something beside it can take it in.
inline constexpr Seconds shortestBlock{120};

/// One stretch of uninterrupted work in one application under one attribution.
///
/// A pure function of segments, reviews and rules: rebuilt on every change, never stored. Its identifier
/// is that of its first segment.
struct WorkBlock {
    struct ApplicationShare {
        ApplicationIdentity application;
        Seconds duration;

        friend bool operator==(const ApplicationShare&, const ApplicationShare&) = default;
    };

    UUID id;
    Instant start;
    Instant end;
    /// All segments whose time the block covers, in segment order.
    std::vector<WorkBlockSegment> lineage;
    /// The dominant application.
    ApplicationIdentity application;
    /// What the rules say of the segments that explain the block.
    AttributionEvaluation attribution;
    /// That of the first segment that explains the block.
    SegmentReview review;
    /// How many of its segments know only the application.
    int reducedContextSegmentCount = 0;

    Interval interval() const { return {start, end}; }
    /// The review's assignment, else the rules'.
    const std::optional<AttributionAssignment>& effectiveAssignment() const
    {
        return review.assignment ? review.assignment : attribution.assignment;
    }
    /// Rules disagree and no decision of the user settles it.
    bool isInUnsettledConflict() const
    {
        return attribution.isInConflict() && !review.assignment && !review.isConfirmed;
    }

    friend bool operator==(const WorkBlock&, const WorkBlock&) = default;
};

/// How the time of a block's segments divides among applications: by duration, so that the dominant one
/// comes first; of equals, the one that was seen first. Time without an application has no share.
std::vector<WorkBlock::ApplicationShare> applicationShares(std::span<const WorkBlockSegment> segments);

/// What stands for the application where none was seen.
inline ApplicationIdentity unknownApplication()
{
    return {"unknown", unknownApplicationName};
}

/// The application that accounts for most time; of equals, the one that was seen first.
ApplicationIdentity dominantApplication(std::span<const WorkBlockSegment> segments);

} // namespace stintbook
