#pragma once

#include <span>

#include "Domain/ActivitySegment.h"

namespace stintbook {

/// Keeps what the store does not hold yet where a killed process does not take it along: the open
/// segment's present extent and the segments that the store has not accepted.
///
/// An identifier stays the segment's own when the store accepts it, so that the next start saves exactly
/// those that are missing.
class UnsavedSegmentKeeping {
public:
    virtual ~UnsavedSegmentKeeping() = default;
    /// Replaces what was kept; nothing is left behind for an empty list.
    virtual void keep(std::span<const ActivitySegment> segments) = 0;
};

} // namespace stintbook
