#pragma once

#include <vector>

#include "App/OpenedStore.h"
#include "Review/FreeSegments.h"
#include "Review/SegmentReview.h"

namespace stintbook {

/// What is stored about a stretch of time, as blocks are built from it.
struct RecordedDay {
    /// All that overlap it, of all kinds.
    std::vector<ActivitySegment> segments;
    /// What no reviewed item covers of them.
    std::vector<FreeSegment> free;
    SegmentReviews reviews;
};

Stored<RecordedDay> recordedDay(OpenedStore& store, Interval bounds);
/// The same, of segments that were read in the same transaction.
Stored<RecordedDay> recordedDay(OpenedStore& store, Interval bounds, std::vector<ActivitySegment> segments);

} // namespace stintbook
