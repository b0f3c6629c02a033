#pragma once

#include <optional>
#include <string>
#include <vector>

#include "Base/Decimal.h"
#include "Base/Instant.h"
#include "Billing/RoundingPolicy.h"
#include "Export/ExportLine.h"

namespace stintbook {

/// Lines of one day with equal names and terms, added up.
struct ExportSummaryRow {
    std::string dayID;
    Instant dayStart;
    std::string timeZoneIdentifier;
    std::string clientName;
    std::string projectName;
    bool isBillable = true;
    std::optional<std::string> currencyCode;
    std::optional<Decimal> hourlyRate;
    RoundingPolicy rounding = RoundingPolicy::exact;
    Decimal actualSeconds;
    /// The sum of what the lines bill, not rounded again.
    Decimal billedSeconds;
    std::optional<Decimal> amount;
    int lineCount = 0;

    friend bool operator==(const ExportSummaryRow&, const ExportSummaryRow&) = default;
};

/// In the order of their first lines.
std::vector<ExportSummaryRow> summaryRows(const std::vector<ExportLine>& lines);

} // namespace stintbook
