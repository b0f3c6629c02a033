#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Export/ExportLine.h"
#include "Export/ExportTotals.h"

/// What the summary text and the timesheet say about amounts and times, in the same words.
namespace stintbook {

/// The amount of billable work, or why there is none. Work that is not billable amounts to nothing.
std::string amountText(const ExportTotals& totals, const std::optional<BillingCurrency>& currency,
                       std::string_view locale);

/// What must be known where the amount is missing: what part of it is known, and what is not set.
std::vector<std::string> amountRemarks(const ExportTotals& totals,
                                       const std::optional<BillingCurrency>& currency,
                                       std::string_view locale);

/// "1 billable entry has no rate, so the amount is unavailable."
std::string unpricedNote(int unpricedLineCount);
inline constexpr std::string_view currencyMissingNote =
    "No billing currency is set, so the amount is unavailable.";

/// How the lines' time was rounded; absent for no lines.
std::optional<std::string> roundingNote(const std::vector<ExportLine>& lines);

} // namespace stintbook
