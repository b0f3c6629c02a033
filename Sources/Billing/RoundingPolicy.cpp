#include "Billing/RoundingPolicy.h"

#include <algorithm>

#include "Base/Text.h"

namespace stintbook {

namespace {

enum class Direction { nearest, up };

struct Rule {
    RoundingPolicy policy;
    std::string_view label;
    /// Zero: nothing is rounded.
    int unitSeconds;
    Direction direction;
};

constexpr std::array rules{
    Rule{RoundingPolicy::exact, "Exact", 0, Direction::nearest},
    Rule{RoundingPolicy::nearestSixMinutes, "Nearest 6 minutes", 360, Direction::nearest},
    Rule{RoundingPolicy::upToNextSixMinutes, "Up to next 6 minutes", 360, Direction::up},
    Rule{RoundingPolicy::nearestFifteenMinutes, "Nearest 15 minutes", 900, Direction::nearest},
    Rule{RoundingPolicy::upToNextFifteenMinutes, "Up to next 15 minutes", 900, Direction::up},
};

const Rule& ruleOf(RoundingPolicy policy)
{
    return *std::ranges::find(rules, policy, &Rule::policy);
}

} // namespace

std::string_view label(RoundingPolicy policy)
{
    return ruleOf(policy).label;
}

Decimal billedSeconds(const Decimal& trackedSeconds, std::optional<RoundingPolicy> policy)
{
    if (trackedSeconds <= 0)
        return 0;
    const Rule& rule = ruleOf(policy.value_or(RoundingPolicy::exact));
    if (rule.unitSeconds == 0)
        return trackedSeconds;
    const Decimal units = trackedSeconds / rule.unitSeconds;
    return (rule.direction == Direction::up ? units.roundedUp() : units.rounded(0)) * rule.unitSeconds;
}

std::optional<std::string> roundingNote(const std::vector<std::optional<RoundingPolicy>>& policies)
{
    if (policies.empty())
        return std::nullopt;
    const auto policy = policies.front();
    if (!policy || std::ranges::count(policies, policy) != std::ssize(policies))
        return "Billed under mixed rounding rules";
    return "Billed to the " + lowerCased(label(*policy));
}

} // namespace stintbook
