#pragma once

#include <vector>

#include "Domain/PersistenceError.h"
#include "Rules/AttributionRule.h"
#include "Store/StoreConnection.h"
#include "Store/StoredRecords.h"

/// Rules with their browser-domain conditions. Callers hold the transaction.
namespace stintbook {

/// By priority, then identifier.
StoredRecords<AttributionRule> allAttributionRules(StoreConnection& connection);
StoredRecords<ExclusionRule> allExclusionRules(StoreConnection& connection);
void replaceAttributionRules(StoreConnection& connection, const std::vector<AttributionRule>& rules);
void replaceExclusionRules(StoreConnection& connection, const std::vector<ExclusionRule>& rules);

} // namespace stintbook
