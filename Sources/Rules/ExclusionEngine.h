#pragma once

#include <memory>
#include <vector>

#include "Domain/ActivitySegment.h"
#include "Rules/AttributionRule.h"
#include "Rules/RuleSubject.h"

namespace stintbook {

/// Tells whether a segment is kept out: whether any enabled rule matches it. An immutable value, cheap to
/// copy.
class ExclusionEngine {
public:
    explicit ExclusionEngine(std::vector<ExclusionRule> rules);

    /// The enabled rules, in rule order.
    const std::vector<ExclusionRule>& orderedRules() const;
    bool excludes(const ActivitySegment& segment) const;
    bool excludes(const RuleSubject& subject) const;

private:
    struct Prepared;
    std::shared_ptr<const Prepared> m_prepared;
};

} // namespace stintbook
