#pragma once

#include <optional>
#include <string>
#include <vector>

#include "Base/Decimal.h"
#include "Billing/BillingCurrency.h"
#include "Export/ExportLine.h"

namespace stintbook {

struct ExportTotals {
    Decimal actualSeconds;
    Decimal billedSeconds;
    Decimal billableBilledSeconds;
    Decimal nonBillableBilledSeconds;
    /// Only when every billable line is priced.
    std::optional<Decimal> amount;
    /// Of the priced lines; absent when none is.
    std::optional<Decimal> knownAmount;
    std::optional<std::string> currencyCode;
    int unpricedLineCount = 0;

    friend bool operator==(const ExportTotals&, const ExportTotals&) = default;
};

ExportTotals totals(const std::vector<ExportLine>& lines, const std::optional<BillingCurrency>& currency);

/// Adds to a sum that is absent as long as nothing was added.
void addIfPresent(std::optional<Decimal>& sum, const std::optional<Decimal>& amount);

} // namespace stintbook
