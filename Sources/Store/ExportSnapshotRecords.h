#pragma once

#include <optional>
#include <vector>

#include "Export/BillingRepository.h"
#include "Store/StoreConnection.h"
#include "Store/StoredRecords.h"

/// Recorded exports. Callers hold the transaction.
namespace stintbook {

/// Newest first.
StoredRecords<ExportSnapshot> snapshotsNewestFirst(StoreConnection& connection);
/// Oldest first, which is also the order of their rows: of two at one instant, the later one stays the latest.
StoredRecords<ExportSnapshot> allSnapshots(StoreConnection& connection);
/// Without their lines and days.
StoredRecords<ExportSnapshot> allSnapshotHeads(StoreConnection& connection);

/// A part of a snapshot with its place there, from 0.
template <typename Part> struct SnapshotPart {
    ExportSnapshotID snapshot;
    int position = 0;
    Stored<Part> part;
};
/// Of all snapshots, one after the other.
StoredRecords<ExportLine, SnapshotPart<ExportLine>> allSnapshotLines(StoreConnection& connection);
StoredRecords<ExportDayRevision, SnapshotPart<ExportDayRevision>> allSnapshotDays(
    StoreConnection& connection);

Stored<std::optional<ExportSnapshot>> readSnapshot(StoreConnection& connection, ExportSnapshotID id);
/// What the latest export that includes the day recorded.
std::optional<ReviewedDayRevision> readExportedRevision(StoreConnection& connection, const LocalDay& day);
std::vector<ExportedDay> readExportedDays(StoreConnection& connection);

/// False when one of that identifier is stored: nothing was written then.
bool appendSnapshot(StoreConnection& connection, const ExportSnapshot& snapshot);

} // namespace stintbook
