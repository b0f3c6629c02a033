#include "Export/SummaryText.h"

#include <algorithm>

#include <fmt/format.h>
#include <fmt/ranges.h>

#include "Base/Text.h"
#include "Export/DurationText.h"
#include "Export/ExportCalendar.h"
#include "Export/ExportRemarks.h"

namespace stintbook {

namespace {

constexpr std::string_view partSeparator = " · ";

std::string dateText(const LocalDay& day)
{
    return exportCalendar(day.timeZoneIdentifier).dateOf(day.start).text();
}

std::string heading(const ExportDocumentModel& document)
{
    const auto first = dateText(document.request.rangeStart);
    const auto last = dateText(document.request.rangeEnd);
    std::vector<std::string> parts{"Timesheet", first == last ? first : first + " – " + last};
    for (const auto& filter : {document.clientFilterName, document.projectFilterName}) {
        if (filter)
            parts.push_back(*filter);
    }
    return fmt::format("{}", fmt::join(parts, partSeparator));
}

std::string sectionLine(const ExportSection& section, const std::optional<BillingCurrency>& currency,
                        std::string_view locale)
{
    const auto sums = totals(section.lines, currency);
    const auto account = fmt::format("{} / {} — {}", section.clientName, section.projectName,
                                     durationText(sums.billedSeconds));
    const bool isBillable = sums.amount || sums.unpricedLineCount > 0;
    return isBillable ? fmt::format("{}{}{}", account, partSeparator, amountText(sums, currency, locale))
                      : account;
}

} // namespace

std::expected<std::string, ExportTextProblem> summaryText(const ExportDocumentModel& document,
                                                          std::string_view locale)
{
    const auto& [request, currency, lines, days, totals, blockedDays, clientFilter, projectFilter] = document;
    std::vector<std::string> text{heading(document)};
    for (const auto& section : sections(lines))
        text.push_back(sectionLine(section, currency, locale));

    text.push_back("Total: " + durationText(totals.billedSeconds));
    text.push_back("Reviewed total: " + durationText(totals.actualSeconds));
    text.push_back("Amount: " + amountText(totals, currency, locale));
    std::ranges::move(amountRemarks(totals, currency, locale), std::back_inserter(text));
    if (const auto note = roundingNote(lines))
        text.push_back(*note);

    auto joined = fmt::format("{}", fmt::join(text, "\n"));
    if (!isValidUTF8(joined))
        return std::unexpected(ExportTextProblem::notEncodable);
    return joined;
}

} // namespace stintbook
