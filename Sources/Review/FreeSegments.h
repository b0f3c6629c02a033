#pragma once

#include <span>
#include <vector>

#include "Base/Instant.h"
#include "Domain/ActivitySegment.h"
#include "Review/ReviewedWorkItem.h"

namespace stintbook {

/// A piece of a recorded segment that no reviewed item covers.
struct FreeSegment {
    /// What is left of the recorded segment. It keeps the segment's identifier when that is all of it; a
    /// lesser piece has an identifier of its own, which follows from the segment's and the piece's start.
    ActivitySegment segment;
    SegmentID sourceSegmentID;

    friend bool operator==(const FreeSegment&, const FreeSegment&) = default;
};

/// What is free of recorded segments within a day: each is clipped to the day's bounds and loses what the
/// items' slices cover of it, whatever day those items belong to and whether or not they are ignored. So
/// days that were cut in two zones share their time without counting any of it twice. All kinds, in segment
/// order.
std::vector<FreeSegment> freeSegments(std::span<const ActivitySegment> segments, Interval bounds,
                                      std::span<const ReviewedWorkItem> items);

} // namespace stintbook
