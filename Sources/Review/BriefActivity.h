#pragma once

#include <vector>

#include "Base/Identifier.h"
#include "Base/Instant.h"
#include "Review/FreeSegments.h"
#include "Review/WorkBlock.h"

namespace stintbook {

/// A stretch of activity too short to stand as a block of its own in a list of blocks.
struct BriefActivity {
    /// Follows from the identifiers of the segments it covers, so that it stays the same across rebuilds.
    UUID id;
    Instant start;
    Instant end;

    Interval interval() const { return {start, end}; }

    friend bool operator==(const BriefActivity&, const BriefActivity&) = default;
};

/// Gathers blocks under 120 s: those that follow one another with no longer block, idle time or gap
/// between them are one brief activity. Takes a day's blocks in time order and its free segments of all
/// kinds.
std::vector<BriefActivity> briefActivities(const std::vector<WorkBlock>& blocks,
                                           const std::vector<FreeSegment>& freeSegments);

} // namespace stintbook
