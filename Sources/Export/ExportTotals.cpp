#include "Export/ExportTotals.h"

namespace stintbook {

void addIfPresent(std::optional<Decimal>& sum, const std::optional<Decimal>& amount)
{
    if (amount)
        sum = sum.value_or(0) + *amount;
}

ExportTotals totals(const std::vector<ExportLine>& lines, const std::optional<BillingCurrency>& currency)
{
    ExportTotals totals;
    for (const auto& line : lines) {
        totals.actualSeconds += line.actualSeconds;
        totals.billedSeconds += line.billedSeconds;
        (line.isBillable ? totals.billableBilledSeconds : totals.nonBillableBilledSeconds) +=
            line.billedSeconds;
        totals.unpricedLineCount += line.isUnpriced() ? 1 : 0;
        addIfPresent(totals.knownAmount, line.amount);
    }
    if (totals.unpricedLineCount == 0)
        totals.amount = totals.knownAmount;
    if (currency)
        totals.currencyCode = currency->code();
    return totals;
}

} // namespace stintbook
