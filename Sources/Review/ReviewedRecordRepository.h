#pragma once

#include <optional>
#include <span>
#include <vector>

#include "Domain/PersistenceError.h"
#include "Review/ReviewedDayApproval.h"
#include "Review/ReviewedLayerMutation.h"
#include "Review/ReviewedWorkItem.h"

namespace stintbook {

/// Reviewed items with their slices and dispositions, and day approvals.
class ReviewedRecordRepository {
public:
    virtual ~ReviewedRecordRepository() = default;

    /// By start, then identifier.
    virtual Stored<std::vector<ReviewedWorkItem>> items(const LocalDay& day) const = 0;
    /// Items of any day that overlap the interval, touching ends aside.
    virtual Stored<std::vector<ReviewedWorkItem>> items(Interval overlapping) const = 0;
    virtual Stored<std::optional<ReviewedDayApproval>> approval(const LocalDay& day) const = 0;
    /// Every day that has items or an approval, in order; those that start inside the interval when one is
    /// given.
    virtual Stored<std::vector<LocalDay>> reviewedDays(std::optional<Interval> startingIn) const = 0;
    /// In one transaction; an item that breaks an invariant is refused as a whole.
    virtual Stored<void> apply(const ReviewedLayerMutation& mutation) = 0;
};

class SegmentReviewRepository {
public:
    virtual ~SegmentReviewRepository() = default;

    /// Those of the given segments; segments without a stored review are left out.
    virtual Stored<SegmentReviews> reviews(std::span<const SegmentID> segments) const = 0;
    /// Those of the segments that overlap the interval, touching ends aside.
    virtual Stored<SegmentReviews> reviews(Interval overlapping) const = 0;
    /// In one transaction; an empty review removes the record.
    virtual Stored<void> saveReviews(const std::map<SegmentID, SegmentReview>& reviews) = 0;
};

} // namespace stintbook
