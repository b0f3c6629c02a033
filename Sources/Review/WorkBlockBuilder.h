#pragma once

#include <vector>

#include "Domain/CalendarContext.h"
#include "Review/FreeSegments.h"
#include "Review/WorkBlock.h"
#include "Rules/AttributionEngine.h"
#include "Rules/ExclusionEngine.h"

namespace stintbook {

/// Groups free recorded work into blocks. Pure: the same input, in whatever order, always gives the same
/// blocks with the same identifiers.
///
/// Touching segments with one application, attribution and review make a run. Runs under two minutes are
/// absorbed by longer neighbours with the same review, equal neighbours are joined, and what then is still
/// short is put together with what is short beside it.
class WorkBlockBuilder {
public:
    WorkBlockBuilder(CalendarContext calendar, AttributionEngine engine, ExclusionEngine exclusion);

    /// Blocks in time order. Idle time, gaps and excluded segments never reach a block. Reviews are looked
    /// up by the source segment.
    std::vector<WorkBlock> blocks(const std::vector<FreeSegment>& segments,
                                  const SegmentReviews& reviews) const;

private:
    CalendarContext m_calendar;
    AttributionEngine m_engine;
    ExclusionEngine m_exclusion;
};

} // namespace stintbook
