#pragma once

#include <memory>
#include <vector>

#include "Domain/ActivitySegment.h"
#include "Domain/AssignmentDirectory.h"
#include "Rules/AttributionRule.h"
#include "Rules/RuleSubject.h"

namespace stintbook {

/// Evaluates segments against the enabled rules in rule order: the first that matches wins, a later one
/// supports or contradicts it. Rules whose target may not receive new work take no part.
///
/// An immutable value, cheap to copy; conditions are prepared once, at construction.
class AttributionEngine {
public:
    AttributionEngine(std::vector<AttributionRule> rules, const AssignmentDirectory& directory);

    /// The enabled rules, in rule order.
    const std::vector<AttributionRule>& orderedRules() const;
    AttributionEvaluation evaluate(const ActivitySegment& segment) const;
    AttributionEvaluation evaluate(const RuleSubject& subject) const;

private:
    struct Prepared;
    std::shared_ptr<const Prepared> m_prepared;
};

} // namespace stintbook
