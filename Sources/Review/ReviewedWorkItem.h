#pragma once

#include <array>
#include <expected>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Base/Identifier.h"
#include "Base/RawValue.h"
#include "Domain/ActivitySegment.h"
#include "Domain/CalendarContext.h"
#include "Rules/AttributionRule.h"

namespace stintbook {

using ReviewedItemID = Identifier<struct ReviewedItemKindTag>;

enum class ReviewedItemOrigin {
    /// Frozen from recorded segments; has at least one slice.
    observedReviewed,
    /// Added by the user; has no slices.
    manual,
};

template <> struct RawValues<ReviewedItemOrigin> {
    static constexpr std::array table{
        std::pair{ReviewedItemOrigin::observedReviewed, std::string_view("observed-reviewed")},
        std::pair{ReviewedItemOrigin::manual, std::string_view("manual")},
    };
};

enum class ReviewedItemDisposition { included, ignored };

template <> struct RawValues<ReviewedItemDisposition> {
    static constexpr std::array table{
        std::pair{ReviewedItemDisposition::included, std::string_view("included")},
        std::pair{ReviewedItemDisposition::ignored, std::string_view("ignored")},
    };
};

/// The part of one recorded segment that an item covers.
struct ReviewedSourceSlice {
    SegmentID segmentID;
    Instant start;
    Instant end;

    Interval interval() const { return {start, end}; }

    friend bool operator==(const ReviewedSourceSlice&, const ReviewedSourceSlice&) = default;
};

/// Frozen work: what is billed. It changes only by the user's edits.
struct ReviewedWorkItem {
    ReviewedItemID id;
    LocalDay day;
    Instant start;
    Instant end;
    ReviewedItemOrigin origin = ReviewedItemOrigin::observedReviewed;
    AttributionAssignment assignment;
    std::optional<std::string> description;
    /// In time order, without hole or overlap.
    std::vector<ReviewedSourceSlice> slices;
    ReviewedItemDisposition disposition = ReviewedItemDisposition::included;

    Interval interval() const { return {start, end}; }
    bool isIncluded() const { return disposition == ReviewedItemDisposition::included; }

    friend bool operator==(const ReviewedWorkItem&, const ReviewedWorkItem&) = default;
};

/// An invariant of `ReviewedWorkItem` that is broken.
enum class ReviewedItemProblem {
    emptyInterval,
    crossesLocalDay,
    manualItemHasSlices,
    observedItemHasNoSlices,
    sliceNotPositive,
    sliceOutsideItem,
    slicesNotContiguous,
};

template <> struct RawValues<ReviewedItemProblem> {
    using Problem = ReviewedItemProblem;
    static constexpr std::array table{
        std::pair{Problem::emptyInterval, std::string_view("emptyInterval")},
        std::pair{Problem::crossesLocalDay, std::string_view("crossesLocalDay")},
        std::pair{Problem::manualItemHasSlices, std::string_view("manualItemHasSlices")},
        std::pair{Problem::observedItemHasNoSlices, std::string_view("observedItemHasNoSlices")},
        std::pair{Problem::sliceNotPositive, std::string_view("sliceNotPositive")},
        std::pair{Problem::sliceOutsideItem, std::string_view("sliceOutsideItem")},
        std::pair{Problem::slicesNotContiguous, std::string_view("slicesNotContiguous")},
    };
};

/// Absent when every invariant holds. The item's own zone decides its day's bounds.
std::optional<ReviewedItemProblem> problem(const ReviewedWorkItem& item);

} // namespace stintbook
