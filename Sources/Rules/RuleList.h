#pragma once

#include <cstddef>
#include <expected>
#include <string>
#include <variant>
#include <vector>

#include "Domain/AssignmentDirectory.h"
#include "Rules/AttributionRule.h"

/// Edits of a rule list. Each takes the list as stored and returns it as it is to be stored: in list order,
/// priorities rewritten as 0, 1, 2 …, so that sorting by them reproduces the order.
namespace stintbook {

enum class RuleListProblem {
    /// No condition at all, or one whose text is empty.
    noCondition,
    ruleMissing,
    positionOutsideList,
};

/// Why an edit of the list is refused. Nothing was changed.
using RuleEditProblem = std::variant<RuleListProblem, AssignmentTargetProblem>;

std::string message(const RuleEditProblem& problem);

template <typename Rule> using EditedRules = std::expected<std::vector<Rule>, RuleEditProblem>;

/// The rule's own priority is of no account.
[[nodiscard]] EditedRules<AttributionRule> insertedAtTop(std::vector<AttributionRule> rules,
                                                         AttributionRule rule,
                                                         const AssignmentDirectory& directory);
[[nodiscard]] EditedRules<ExclusionRule> insertedAtTop(std::vector<ExclusionRule> rules, ExclusionRule rule);

/// Inserts a copy of a rule, with an identifier of its own, directly below the original. A copy is a new
/// rule: its target must be able to receive new work.
[[nodiscard]] EditedRules<AttributionRule> copiedBelow(std::vector<AttributionRule> rules, RuleID original,
                                                       RuleID copy, const AssignmentDirectory& directory);
[[nodiscard]] EditedRules<ExclusionRule> copiedBelow(std::vector<ExclusionRule> rules, RuleID original,
                                                     RuleID copy);

/// Directly below `original`.
[[nodiscard]] EditedRules<AttributionRule> insertedBelow(std::vector<AttributionRule> rules, RuleID original,
                                                         AttributionRule rule,
                                                         const AssignmentDirectory& directory);
/// In the place of the rule that has its identifier. Only a target that is not the old one must be able to receive
/// new work.
[[nodiscard]] EditedRules<AttributionRule> replaced(std::vector<AttributionRule> rules, AttributionRule rule,
                                                    const AssignmentDirectory& directory);

// The following are there for both kinds of rule.

/// Positions count from 1; the rule stands at `position` afterwards.
template <typename Rule>
[[nodiscard]] EditedRules<Rule> moved(std::vector<Rule> rules, RuleID rule, std::size_t position);
template <typename Rule> [[nodiscard]] EditedRules<Rule> enabled(std::vector<Rule> rules, RuleID rule);
template <typename Rule> [[nodiscard]] EditedRules<Rule> disabled(std::vector<Rule> rules, RuleID rule);
template <typename Rule> [[nodiscard]] EditedRules<Rule> removed(std::vector<Rule> rules, RuleID rule);

} // namespace stintbook
