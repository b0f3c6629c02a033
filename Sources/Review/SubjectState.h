#pragma once

#include <array>
#include <string_view>
#include <utility>

#include "Base/RawValue.h"
#include "Review/ReviewSubject.h"

namespace stintbook {

/// How a block or an item stands in review.
enum class SubjectState {
    /// Frozen: what is billed.
    reviewed,
    ignored,
    /// Rules disagree about it, and its user has not said which is right.
    conflicting,
    unassigned,
    assignedByHand,
    assignedByRule,
};

template <> struct RawValues<SubjectState> {
    static constexpr std::array table{
        std::pair{SubjectState::reviewed, std::string_view("reviewed")},
        std::pair{SubjectState::ignored, std::string_view("ignored")},
        std::pair{SubjectState::conflicting, std::string_view("conflicting")},
        std::pair{SubjectState::unassigned, std::string_view("unassigned")},
        std::pair{SubjectState::assignedByHand, std::string_view("assignedByHand")},
        std::pair{SubjectState::assignedByRule, std::string_view("assignedByRule")},
    };
};

SubjectState state(const WorkBlock& block);
SubjectState state(const ReviewedWorkItem& item);
SubjectState state(const ReviewSubject& subject);

/// Keeps its day from being marked ready.
inline bool isUnresolved(SubjectState state)
{
    return state == SubjectState::conflicting || state == SubjectState::unassigned;
}

} // namespace stintbook
