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

} // namespace stintbook
