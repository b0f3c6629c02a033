#pragma once

#include <optional>
#include <string>
#include <vector>

#include "Domain/PersistenceError.h"
#include "Review/ReviewedLayerMutation.h"
#include "Store/StoreConnection.h"
#include "Store/StoredRecords.h"

/// Reviewed items with their slices and dispositions, and day approvals. Callers hold the transaction.
namespace stintbook {

/// Lists of items come by start, then identifier.
Stored<std::vector<ReviewedWorkItem>> readItems(StoreConnection& connection, const LocalDay& day);
Stored<std::vector<ReviewedWorkItem>> readItems(StoreConnection& connection, Interval overlapping);
bool hasItems(StoreConnection& connection, const LocalDay& day);
StoredRecords<ReviewedWorkItem> allItems(StoreConnection& connection);

Stored<std::optional<ReviewedDayApproval>> readApproval(StoreConnection& connection, const LocalDay& day);
/// By the day's start, then its zone.
StoredRecords<ReviewedDayApproval> allApprovals(StoreConnection& connection);
/// With the text that it is stored under, which a readable one's day has as its identifier.
struct KeyedApproval {
    std::string key;
    Stored<ReviewedDayApproval> approval;
};
StoredRecords<ReviewedDayApproval, KeyedApproval> allKeyedApprovals(StoreConnection& connection);
std::vector<LocalDay> readReviewedDays(StoreConnection& connection,
                                       const std::optional<Interval>& startingIn);

/// False when an item of that identifier is there already.
bool insertItemIfAbsent(StoreConnection& connection, const ReviewedWorkItem& item);
void writeApproval(StoreConnection& connection, const ReviewedDayApproval& approval);

Stored<void> applyMutation(StoreConnection& connection, const ReviewedLayerMutation& mutation);

} // namespace stintbook
