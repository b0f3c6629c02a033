#pragma once

#include <map>
#include <optional>
#include <unordered_map>

#include "Domain/ActivitySegment.h"
#include "Rules/AttributionRule.h"

namespace stintbook {

/// The user's correction of one recorded segment. A segment without one has the empty review.
struct SegmentReview {
    /// Replaces whatever the rules say.
    std::optional<AttributionAssignment> assignment;
    bool isIgnored = false;
    bool isConfirmed = false;

    friend bool operator==(const SegmentReview&, const SegmentReview&) = default;
};

using SegmentReviews = std::unordered_map<SegmentID, SegmentReview>;

} // namespace stintbook
