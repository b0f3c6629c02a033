#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Base/Instant.h"
#include "Base/RawValue.h"
#include "Domain/LocalDay.h"
#include "Review/ReviewedWorkItem.h"

namespace stintbook {

/// Names the exact content of a day's reviewed layer: 64 lower-case hexadecimal digits.
struct ReviewedDayRevision {
    std::string value;

    friend bool operator==(const ReviewedDayRevision&, const ReviewedDayRevision&) = default;
};

struct ReviewedDayApproval {
    LocalDay day;
    ReviewedDayRevision revision;
    Instant approvedAt;

    friend bool operator==(const ReviewedDayApproval&, const ReviewedDayApproval&) = default;
};

enum class ReviewedDayStatus { notReady, ready };

template <> struct RawValues<ReviewedDayStatus> {
    static constexpr std::array table{
        std::pair{ReviewedDayStatus::notReady, std::string_view("notReady")},
        std::pair{ReviewedDayStatus::ready, std::string_view("ready")},
    };
};

/// A day stays ready as long as its content is the approved one.
ReviewedDayStatus status(const std::optional<ReviewedDayApproval>& approval,
                         const ReviewedDayRevision& current);

/// The text that is hashed: one line an included item, by start, then identifier.
std::string canonicalText(const std::vector<ReviewedWorkItem>& items);
ReviewedDayRevision revision(const std::vector<ReviewedWorkItem>& items);

} // namespace stintbook
