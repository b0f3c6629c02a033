#pragma once

#include <optional>
#include <vector>

#include "Export/BillingRepository.h"
#include "Store/RecordWalk.h"
#include "Store/StoreConnection.h"
#include "Store/StoredRecords.h"

/// Recorded exports. Callers hold the transaction.
namespace stintbook {

/// Newest first.
Stored<std::vector<ExportSnapshot>> readSnapshots(StoreConnection& connection);
/// Oldest first, which is also the order of their rows: of two at one instant, the later one stays the latest.
StoredRecords<ExportSnapshot> allSnapshots(StoreConnection& connection);
/// Without their lines and days.
void walkSnapshotHeads(StoreConnection& connection, const RecordVisitor<ExportSnapshot>& visit);

/// A part of a snapshot with its place there, from 0.
template <typename Part>
using SnapshotPartVisitor = std::function<void(ExportSnapshotID, int position, Stored<Part>)>;
/// Of all snapshots, one after the other.
void walkSnapshotLines(StoreConnection& connection, const SnapshotPartVisitor<ExportLine>& visit);
void walkSnapshotDays(StoreConnection& connection, const SnapshotPartVisitor<ExportDayRevision>& visit);

Stored<std::optional<ExportSnapshot>> readSnapshot(StoreConnection& connection, ExportSnapshotID id);
/// What the latest export that includes the day recorded.
std::optional<ReviewedDayRevision> readExportedRevision(StoreConnection& connection, const LocalDay& day);
std::vector<ExportedDay> readExportedDays(StoreConnection& connection);

/// False when one of that identifier is stored: nothing was written then.
bool appendSnapshot(StoreConnection& connection, const ExportSnapshot& snapshot);

} // namespace stintbook
