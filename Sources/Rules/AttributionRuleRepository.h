#pragma once

#include <optional>
#include <vector>

#include "Domain/PersistenceError.h"
#include "Rules/AttributionRule.h"

namespace stintbook {

/// Everything rule editing needs stored. Lists come back in stored order of priority, then identifier.
class AttributionRuleRepository {
public:
    virtual ~AttributionRuleRepository() = default;

    virtual Stored<std::vector<AttributionRule>> attributionRules() const = 0;
    virtual Stored<std::vector<ExclusionRule>> exclusionRules() const = 0;
    /// Replaces the whole list of a kind in one transaction: inserts, changes, reorders and deletes.
    virtual Stored<void> replaceAttributionRules(const std::vector<AttributionRule>& rules) = 0;
    virtual Stored<void> replaceExclusionRules(const std::vector<ExclusionRule>& rules) = 0;
};

} // namespace stintbook
