#pragma once

#include <vector>

#include "Domain/PersistenceError.h"
#include "Rules/AttributionRule.h"
#include "Store/RecordWalk.h"
#include "Store/StoreConnection.h"

/// Rules with their browser-domain conditions. Callers hold the transaction.
namespace stintbook {

/// By priority, then identifier.
Stored<std::vector<AttributionRule>> readAttributionRules(StoreConnection& connection);
void walkAttributionRules(StoreConnection& connection, const RecordVisitor<AttributionRule>& visit);
Stored<std::vector<ExclusionRule>> readExclusionRules(StoreConnection& connection);
void walkExclusionRules(StoreConnection& connection, const RecordVisitor<ExclusionRule>& visit);
void replaceAttributionRules(StoreConnection& connection, const std::vector<AttributionRule>& rules);
void replaceExclusionRules(StoreConnection& connection, const std::vector<ExclusionRule>& rules);

} // namespace stintbook
