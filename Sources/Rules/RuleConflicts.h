#pragma once

#include <map>
#include <set>
#include <vector>

#include "Domain/AssignmentDirectory.h"
#include "Rules/AttributionRule.h"

namespace stintbook {

/// Two enabled rules that could match the same work but attribute it differently.
struct RuleConflict {
    /// The one that stands higher in the list.
    RuleID winner;
    RuleID loser;

    friend bool operator==(const RuleConflict&, const RuleConflict&) = default;
};

/// All of them, in rule order of the winners, then of the losers.
std::vector<RuleConflict> conflictingPairs(const std::vector<AttributionRule>& rules,
                                           const AssignmentDirectory& directory);

/// Pairs of enabled rules that could match the same work but attribute it differently, each way round.
std::map<RuleID, std::set<RuleID>> conflicts(const std::vector<AttributionRule>& rules,
                                             const AssignmentDirectory& directory);

/// The rules that lose a conflict to a rule above them.
std::set<RuleID> losingRuleIDs(const std::vector<AttributionRule>& rules,
                               const AssignmentDirectory& directory);

} // namespace stintbook
