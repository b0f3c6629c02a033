#pragma once

#include <optional>
#include <string>
#include <vector>

#include "Base/Instant.h"
#include "Billing/BillingBook.h"
#include "Domain/AssignmentDirectory.h"
#include "Export/ExportLine.h"
#include "Export/ExportRequest.h"
#include "Export/ExportSection.h"
#include "Export/ExportSummaryRow.h"
#include "Export/ExportTotals.h"
#include "Review/ReviewedDayApproval.h"
#include "Review/ReviewedWorkItem.h"

namespace stintbook {

/// One day of the range as review leaves it.
struct ExportDayInput {
    LocalDay day;
    ReviewedDayRevision revision;
    bool isReady = false;
    std::vector<ReviewedWorkItem> items;
    std::optional<std::string> notReadyReason;
};

struct ExportBlockedDay {
    LocalDay day;
    std::optional<std::string> reason;

    friend bool operator==(const ExportBlockedDay&, const ExportBlockedDay&) = default;
};

/// Why nothing can be exported.
enum class ExportBlock {
    /// There are no lines, and days of the range are not ready: making them ready may give some.
    daysNotReady,
    /// There are no lines though no day is held back: no work, none included, or none that the filters match.
    noIncludedWork,
};
std::string message(ExportBlock block);

struct ExportDayRevision {
    std::string dayID;
    Instant dayStart;
    std::string timeZoneIdentifier;
    std::string revision;

    friend bool operator==(const ExportDayRevision&, const ExportDayRevision&) = default;
};

/// A frozen document, the same for every format. It holds no titles, addresses or reasons.
struct ExportDocumentModel {
    /// Normalised.
    ExportRequest request;
    std::optional<BillingCurrency> currency;
    /// By day, then start.
    std::vector<ExportLine> lines;
    /// The days that gave it lines.
    std::vector<ExportDayRevision> days;
    ExportTotals totals;
    std::vector<ExportBlockedDay> blockedDays;
    std::optional<std::string> clientFilterName;
    std::optional<std::string> projectFilterName;

    /// Absent when there is something to export.
    std::optional<ExportBlock> block() const;

    friend bool operator==(const ExportDocumentModel&, const ExportDocumentModel&) = default;
};

/// Day inputs outside the request's range are left aside.
ExportDocumentModel buildDocument(const ExportRequest& request, std::vector<ExportDayInput> days,
                                  const AssignmentDirectory& directory, const BillingBook& billing);

/// "1 day needs review".
std::string blockedDaysHeading(const std::vector<ExportBlockedDay>& days);

} // namespace stintbook
