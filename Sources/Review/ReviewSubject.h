#pragma once

#include <optional>
#include <span>
#include <variant>
#include <vector>

#include "Review/FreeSegments.h"
#include "Review/ReviewedWorkItem.h"
#include "Review/WorkBlock.h"

namespace stintbook {

/// Everything that review selects, inspects or edits: a block that is not frozen yet, or reviewed work.
using ReviewSubject = std::variant<WorkBlock, ReviewedWorkItem>;

Interval interval(const ReviewSubject& subject);
UUID identifier(const ReviewSubject& subject);
/// The user marked it as not work.
bool isIgnored(const ReviewSubject& subject);
/// Absent for a block that neither a review nor a rule attributes.
std::optional<AttributionAssignment> effectiveAssignment(const ReviewSubject& subject);

/// One day as review sees it: what edits and approval are computed from.
struct ReviewDay {
    LocalDay day;
    Interval bounds;
    /// Recorded segments clipped to the day, with what no reviewed item covers still free; all kinds.
    std::vector<FreeSegment> freeSegments;
    std::vector<WorkBlock> blocks;
    /// By start, then identifier.
    std::vector<ReviewedWorkItem> items;

    /// Absent when neither a block nor an item of the day has that identifier.
    std::optional<ReviewSubject> subject(UUID id) const;
    /// The times of the work that counts, blocks and items that are not ignored; by start.
    std::vector<Interval> includedTime() const;
};

/// What is selected for an edit. A subject that is named twice is edited once.
using ReviewSelection = std::span<const ReviewSubject>;
std::vector<ReviewSubject> withoutRepetitions(ReviewSelection selection);

} // namespace stintbook
