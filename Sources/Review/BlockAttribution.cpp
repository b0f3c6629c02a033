#include "Review/BlockAttribution.h"

namespace stintbook {

void BlockAttribution::add(const AttributionEvaluation& evaluation)
{
    if (!evaluation.assignment)
        return;
    if (!m_combined.assignment) {
        m_combined.assignment = evaluation.assignment;
        m_combined.winningRuleID = evaluation.winningRuleID;
        m_named.insert(*evaluation.winningRuleID);
    }
    if (evaluation.assignment == m_combined.assignment) {
        name({*evaluation.winningRuleID}, m_combined.supportingRuleIDs);
        name(evaluation.supportingRuleIDs, m_combined.supportingRuleIDs);
        name(evaluation.conflictingRuleIDs, m_combined.conflictingRuleIDs);
    } else {
        name({*evaluation.winningRuleID}, m_combined.conflictingRuleIDs);
    }
}

void BlockAttribution::name(const std::vector<RuleID>& rules, std::vector<RuleID>& list)
{
    for (const auto& rule : rules) {
        if (m_named.insert(rule).second)
            list.push_back(rule);
    }
}

} // namespace stintbook
