#pragma once

#include <optional>
#include <vector>

#include "Export/BillingRepository.h"
#include "Store/StoreConnection.h"

/// Recorded exports. Callers hold the transaction.
namespace stintbook {

/// Newest first.
Stored<std::vector<ExportSnapshot>> readSnapshots(StoreConnection& connection);
Stored<std::optional<ExportSnapshot>> readSnapshot(StoreConnection& connection, ExportSnapshotID id);
/// What the latest export that includes the day recorded.
std::optional<ReviewedDayRevision> readExportedRevision(StoreConnection& connection, const LocalDay& day);
std::vector<ExportedDay> readExportedDays(StoreConnection& connection);

/// False when one of that identifier is stored: nothing was written then.
bool appendSnapshot(StoreConnection& connection, const ExportSnapshot& snapshot);

} // namespace stintbook
