#pragma once

#include <optional>
#include <string>
#include <vector>

#include "Base/Identifier.h"
#include "Export/ExportDocumentModel.h"

namespace stintbook {

using ExportSnapshotID = Identifier<struct ExportSnapshotKindTag>;

/// The record of a delivered export.
struct ExportSnapshot {
    ExportSnapshotID id;
    Instant createdAt;
    ExportFormat format = ExportFormat::summarizedCSV;
    ExportMode mode = ExportMode::summarized;
    ExportFieldSet fields;
    LocalDay rangeStart;
    LocalDay rangeEnd;
    std::optional<ClientID> clientFilterID;
    std::optional<std::string> clientFilterName;
    std::optional<ProjectID> projectFilterID;
    std::optional<std::string> projectFilterName;
    std::vector<ExportLine> lines;
    std::vector<ExportDayRevision> days;
    ExportTotals totals;

    friend bool operator==(const ExportSnapshot&, const ExportSnapshot&) = default;
};

ExportSnapshot snapshotOf(const ExportDocumentModel& document, ExportSnapshotID id, Instant createdAt);
/// The document as it was delivered, for showing it again. The days that were held back are not recorded.
ExportDocumentModel documentOf(const ExportSnapshot& snapshot);

struct ExportReceipt {
    ExportSnapshotID snapshotID;
    Instant createdAt;
    ExportFormat format = ExportFormat::summarizedCSV;
    int dayCount = 0;
    int lineCount = 0;

    friend bool operator==(const ExportReceipt&, const ExportReceipt&) = default;
};
ExportReceipt receiptFor(const ExportSnapshot& snapshot);

} // namespace stintbook
