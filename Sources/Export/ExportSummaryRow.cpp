#include "Export/ExportSummaryRow.h"

#include <map>
#include <tuple>

#include "Export/ExportTotals.h"

namespace stintbook {

namespace {

auto groupOf(const ExportLine& line)
{
    return std::tie(line.dayID, line.clientName, line.projectName, line.isBillable, line.currencyCode,
                    line.hourlyRate, line.rounding);
}

ExportSummaryRow emptyRowFor(const ExportLine& line)
{
    return {
        .dayID = line.dayID,
        .dayStart = line.dayStart,
        .timeZoneIdentifier = line.timeZoneIdentifier,
        .clientName = line.clientName,
        .projectName = line.projectName,
        .isBillable = line.isBillable,
        .currencyCode = line.currencyCode,
        .hourlyRate = line.hourlyRate,
        .rounding = line.rounding,
    };
}

} // namespace

std::vector<ExportSummaryRow> summaryRows(const std::vector<ExportLine>& lines)
{
    std::vector<ExportSummaryRow> rows;
    std::map<decltype(groupOf(lines.front())), std::size_t> rowOfGroup;
    for (const auto& line : lines) {
        const auto [group, isNew] = rowOfGroup.try_emplace(groupOf(line), rows.size());
        if (isNew)
            rows.push_back(emptyRowFor(line));
        auto& row = rows[group->second];
        row.actualSeconds += line.actualSeconds;
        row.billedSeconds += line.billedSeconds;
        addIfPresent(row.amount, line.amount);
        ++row.lineCount;
    }
    return rows;
}

} // namespace stintbook
