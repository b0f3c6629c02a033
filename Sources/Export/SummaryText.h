#pragma once

#include <expected>
#include <string>
#include <string_view>

#include "Export/ExportDelivery.h"
#include "Export/ExportDocumentModel.h"

namespace stintbook {

/// The document as a short text to paste into a message: a heading with the period and the filters, a line
/// an account, the totals, and what must be known about them. Amounts are written as the locale writes
/// money; everything else is the same in every locale.
///
///     Timesheet · 2026-11-16 – 2026-11-20 · Acme
///     Acme / Website — 7 h 30 min · €750.00
///     Total: 7 h 30 min
///     Reviewed total: 7 h 24 min
///     Amount: €750.00
///     Billed to the nearest 15 minutes
std::expected<std::string, ExportTextProblem> summaryText(const ExportDocumentModel& document,
                                                          std::string_view locale);

} // namespace stintbook
