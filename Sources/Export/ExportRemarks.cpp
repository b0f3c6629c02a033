#include "Export/ExportRemarks.h"

#include <fmt/format.h>

#include "Billing/AmountFormat.h"
#include "Billing/RoundingPolicy.h"

namespace stintbook {

std::string amountText(const ExportTotals& totals, const std::optional<BillingCurrency>& currency,
                       std::string_view locale)
{
    return AmountText(currency, locale).text(totals.amount, totals.unpricedLineCount);
}

std::vector<std::string> amountRemarks(const ExportTotals& totals,
                                       const std::optional<BillingCurrency>& currency,
                                       std::string_view locale)
{
    std::vector<std::string> remarks;
    if (currency && totals.unpricedLineCount > 0 && totals.knownAmount)
        remarks.push_back("Known subtotal: " + formattedAmount(*totals.knownAmount, *currency, locale));
    if (totals.unpricedLineCount > 0)
        remarks.push_back(unpricedNote(totals.unpricedLineCount));
    if (!currency)
        remarks.emplace_back(currencyMissingNote);
    return remarks;
}

std::string unpricedNote(int unpricedLineCount)
{
    const auto entries = unpricedLineCount == 1
        ? "1 billable entry has no rate"
        : fmt::format("{} billable entries have no rate", unpricedLineCount);
    return entries + ", so the amount is unavailable.";
}

std::optional<std::string> roundingNote(const std::vector<ExportLine>& lines)
{
    std::vector<std::optional<RoundingPolicy>> policies;
    policies.reserve(lines.size());
    for (const auto& line : lines)
        policies.emplace_back(line.rounding);
    return roundingNote(policies);
}

} // namespace stintbook
