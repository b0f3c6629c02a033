#pragma once

#include <array>
#include <span>
#include <string_view>

#include "Base/Instant.h"
#include "Base/RawValue.h"
#include "Domain/ActivitySegment.h"
#include "Domain/LocalDay.h"

namespace stintbook {

struct ReviewDay;

enum class DayReviewState { noActivity, needsReview };

template <> struct RawValues<DayReviewState> {
    static constexpr std::array table{
        std::pair{DayReviewState::noActivity, std::string_view("noActivity")},
        std::pair{DayReviewState::needsReview, std::string_view("needsReview")},
    };
};

/// What was recorded on one day, whatever became of it in review. Segments count with what of them lies
/// in the day.
struct DaySummary {
    LocalDay day;
    Seconds workDuration;
    Seconds idleDuration;
    Seconds gapDuration;
    int workSegmentCount = 0;
    /// Work segments that know only the application.
    int reducedContextSegmentCount = 0;
    /// `noActivity` exactly when no work was recorded.
    DayReviewState state = DayReviewState::noActivity;

    friend bool operator==(const DaySummary&, const DaySummary&) = default;
};

/// The bounds are those of the day; segments may reach beyond them or lie outside.
DaySummary daySummary(const LocalDay& day, Interval bounds, std::span<const ActivitySegment> segments);

/// The header figures of one day under review: of blocks that are still free, and of included items, which
/// always have an assignment. What is ignored counts in no duration and is not unresolved.
struct WorkReviewSummary {
    DaySummary day;
    /// Free blocks and items that were frozen from blocks; not work that was added by hand.
    Seconds observedDuration;
    /// Free blocks with an effective assignment, and all items.
    Seconds assignedDuration;
    /// Free blocks without an effective assignment.
    Seconds unassignedDuration;
    /// Free blocks without an effective assignment, or in a conflict that no decision of the user settles.
    Seconds unresolvedDuration;
    /// All free blocks, ignored ones among them.
    int blockCount = 0;
    int unresolvedBlockCount = 0;
    /// Free blocks about which rules disagree, settled or not.
    int conflictBlockCount = 0;

    friend bool operator==(const WorkReviewSummary&, const WorkReviewSummary&) = default;
};

WorkReviewSummary workReviewSummary(const DaySummary& recorded, const ReviewDay& reviewed);

} // namespace stintbook
