#pragma once

#include <algorithm>
#include <functional>

#include "Domain/ActivitySegment.h"

namespace stintbook {

/// Puts what `segmentOf` finds the segments of into their order. They nearly always are in it, and so much text is
/// not to be moved in vain.
template <typename Range, typename SegmentOf = std::identity>
void sortBySegments(Range& range, SegmentOf segmentOf = {})
{
    if (!std::ranges::is_sorted(range, segmentOrder, segmentOf))
        std::ranges::sort(range, segmentOrder, segmentOf);
}

} // namespace stintbook
