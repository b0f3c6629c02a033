#pragma once

#include <unordered_set>

#include "Rules/AttributionRule.h"

namespace stintbook {

/// Combines the evaluations of the segments that explain a block, in their order.
///
/// The first that names an assignment decides the block's, and its winner wins. Of later ones, those that
/// agree on the assignment add their rules to the supporting and conflicting ones, those that do not add
/// their winner to the conflicting ones. No rule is named twice.
class BlockAttribution {
public:
    void add(const AttributionEvaluation& evaluation);

    const AttributionEvaluation& combined() const { return m_combined; }

private:
    void name(const std::vector<RuleID>& rules, std::vector<RuleID>& list);

    AttributionEvaluation m_combined;
    std::unordered_set<RuleID> m_named;
};

} // namespace stintbook
