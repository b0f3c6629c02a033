#pragma once

#include <cstddef>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "Review/WorkBlock.h"
#include "Rules/AttributionRule.h"

namespace stintbook {

/// How many days, today included, a preview covers unless it is asked for others.
inline constexpr int usualPreviewDays = 30;

/// How much work each enabled rule attributes, and how much it would match but loses to a rule above it.
///
/// A block counts for a rule once, however many of its segments the rule matches. Blocks that no rule
/// attributes count for none.
struct RulePrecedencePreview {
    struct Counts {
        /// Blocks that the rule wins.
        int applies = 0;
        /// Blocks that it matches, and that a rule above it wins.
        int shadowed = 0;

        friend bool operator==(const Counts&, const Counts&) = default;
    };
    /// Places in `blocks`, ascending.
    struct Matches {
        std::vector<std::size_t> applied;
        std::vector<std::size_t> shadowed;

        friend bool operator==(const Matches&, const Matches&) = default;
    };

    std::vector<WorkBlock> blocks;
    /// The enabled rules, in rule order; the maps have an entry for each.
    std::vector<AttributionRule> rules;
    std::map<RuleID, Counts> countsByRule;
    std::map<RuleID, Matches> matchesByRule;
    /// Those that match no block at all. A rule that is not among them may still count none: its target may have been
    /// archived, or a rule below it may have won.
    std::set<RuleID> rulesWithoutMatch;
};

/// The blocks were built with these rules.
RulePrecedencePreview rulePrecedencePreview(std::vector<AttributionRule> rules,
                                            std::vector<WorkBlock> blocks);

/// What the list of rules shows of one rule's preview.
struct RulePreviewSummary {
    RulePrecedencePreview::Counts counts;
    int windowDays = usualPreviewDays;
    bool matchesNothing = false;

    friend bool operator==(const RulePreviewSummary&, const RulePreviewSummary&) = default;
};

RulePreviewSummary previewSummary(const RulePrecedencePreview& preview, RuleID rule, int windowDays);

/// What is remarkable about it; mostly nothing.
std::string remark(const RulePreviewSummary& summary);

} // namespace stintbook
