#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Base/Decimal.h"
#include "Base/RawValue.h"

namespace stintbook {

/// How a line's tracked time becomes billed time, in the order of the picker.
enum class RoundingPolicy {
    exact,
    nearestSixMinutes,
    upToNextSixMinutes,
    nearestFifteenMinutes,
    upToNextFifteenMinutes,
};

template <> struct RawValues<RoundingPolicy> {
    static constexpr std::array table{
        std::pair{RoundingPolicy::exact, std::string_view("exact")},
        std::pair{RoundingPolicy::nearestSixMinutes, std::string_view("nearest-6m")},
        std::pair{RoundingPolicy::upToNextSixMinutes, std::string_view("up-to-next-6m")},
        std::pair{RoundingPolicy::nearestFifteenMinutes, std::string_view("nearest-15m")},
        std::pair{RoundingPolicy::upToNextFifteenMinutes, std::string_view("up-to-next-15m")},
    };
};

/// "Nearest 6 minutes" and the like.
std::string_view label(RoundingPolicy policy);

/// What a line of `trackedSeconds` bills: whole units of the policy, the time itself when it is exact or
/// absent, and never less than nothing. For single lines; sums add up what their lines bill.
Decimal billedSeconds(const Decimal& trackedSeconds, std::optional<RoundingPolicy> policy);

/// "Billed to the nearest 6 minutes"; absent for no lines.
std::optional<std::string> roundingNote(const std::vector<std::optional<RoundingPolicy>>& policies);

} // namespace stintbook
