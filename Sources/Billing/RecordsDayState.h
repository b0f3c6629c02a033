#pragma once

#include <array>
#include <optional>
#include <string_view>

#include "Base/RawValue.h"
#include "Review/ReviewedDayApproval.h"

namespace stintbook {

/// How a day stands in Records.
enum class RecordsDayState { needsReview, readyToBill, exported, changedSinceExport };

template <> struct RawValues<RecordsDayState> {
    static constexpr std::array table{
        std::pair{RecordsDayState::needsReview, std::string_view("needsReview")},
        std::pair{RecordsDayState::readyToBill, std::string_view("readyToBill")},
        std::pair{RecordsDayState::exported, std::string_view("exported")},
        std::pair{RecordsDayState::changedSinceExport, std::string_view("changedSinceExport")},
    };
};

/// "Needs review" and the like.
std::string_view label(RecordsDayState state);

/// `exported` is the revision that the latest export with this day recorded, if there is one.
RecordsDayState recordsState(const std::optional<ReviewedDayRevision>& exported,
                             const ReviewedDayRevision& current, ReviewedDayStatus status);

} // namespace stintbook
