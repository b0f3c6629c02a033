#pragma once

#include <string>

#include "Review/RulePrecedencePreview.h"
#include "Rules/AttributionEngine.h"

namespace stintbook {

/// What a change of the rules would do to recorded work, in blocks. A block counts once, by the first of its
/// segments that the rules would attribute otherwise; what the user assigned stays as it is and does not count.
struct RuleEffect {
    /// What the rule would attribute, and what it would lose to rules above it.
    RulePreviewSummary summary;
    /// No rule attributes them now.
    int newlyAttributed = 0;
    /// Rules attribute them to something else now.
    int attributedOtherwise = 0;
    /// No rule would attribute them any more.
    int noLongerAttributed = 0;

    friend bool operator==(const RuleEffect&, const RuleEffect&) = default;
};

/// `proposed` is what the changed rules do, `rule` one of them, `present` the rules as they are.
RuleEffect ruleEffect(const RulePrecedencePreview& proposed, RuleID rule, const AttributionEngine& present,
                      int windowDays);

/// In sentences.
std::string description(const RuleEffect& effect);

} // namespace stintbook
