#pragma once

#include <array>
#include <expected>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "Base/RawValue.h"
#include "Review/EditContext.h"
#include "Review/ReviewedEditProblem.h"
#include "Review/ReviewedLayerMutation.h"

namespace stintbook {

/// What keeps a day from being marked ready to bill.
enum class ReadyToBillBlocker { noIncludedWork, unassignedWork, conflictedWork, overlappingReviewedWork };

template <> struct RawValues<ReadyToBillBlocker> {
    using Blocker = ReadyToBillBlocker;
    static constexpr std::array table{
        std::pair{Blocker::noIncludedWork, std::string_view("noIncludedWork")},
        std::pair{Blocker::unassignedWork, std::string_view("unassignedWork")},
        std::pair{Blocker::conflictedWork, std::string_view("conflictedWork")},
        std::pair{Blocker::overlappingReviewedWork, std::string_view("overlappingReviewedWork")},
    };
};

std::string_view message(ReadyToBillBlocker blocker);

/// A day may be marked ready exactly when it has no blocker.
struct ReadyToBillEligibility {
    /// In the enumeration's order, each at most once.
    std::vector<ReadyToBillBlocker> blockers;

    bool isEligible() const { return blockers.empty(); }

    friend bool operator==(const ReadyToBillEligibility&, const ReadyToBillEligibility&) = default;
};

/// Ignored work takes no part. Blocks count in overlaps as the items that they would be frozen to, so that a
/// day is never approved with time that is claimed twice.
ReadyToBillEligibility eligibility(const ReviewDay& day);

/// The blocks and items that a blocker is about, by their identifiers; none where it is that there is none.
std::vector<UUID> workBehind(ReadyToBillBlocker blocker, const ReviewDay& day);

/// The first blocker, or why a block cannot be frozen.
using ReadyToBillRefusal = std::variant<ReadyToBillBlocker, ReviewedEditProblem>;
std::string message(const ReadyToBillRefusal& refusal);

/// Freezes every block that is not ignored and approves the resulting layer at `now`.
std::expected<ReviewedLayerMutation, ReadyToBillRefusal> markReady(const EditContext& context, Instant now);

} // namespace stintbook
