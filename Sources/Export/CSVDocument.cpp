#include "Export/CSVDocument.h"

#include <algorithm>
#include <array>
#include <vector>

#include <fmt/format.h>

#include "Base/Text.h"
#include "Export/ExportCalendar.h"

namespace stintbook {

namespace {

/// What the columns are filled from, a line and a summary row alike.
struct Row {
    Instant dayStart;
    const std::string& timeZoneIdentifier;
    std::optional<Interval> interval;
    const std::string& clientName;
    const std::string& projectName;
    const std::optional<std::string>& description;
    const Decimal& actualSeconds;
    const Decimal& billedSeconds;
    bool isBillable;
    const std::optional<Decimal>& hourlyRate;
    const std::optional<std::string>& currencyCode;
    const std::optional<Decimal>& amount;
    RoundingPolicy rounding;
    std::optional<int> lineCount;
};

Row rowOf(const ExportLine& line)
{
    return {
        .dayStart = line.dayStart,
        .timeZoneIdentifier = line.timeZoneIdentifier,
        .interval = Interval{line.start, line.end},
        .clientName = line.clientName,
        .projectName = line.projectName,
        .description = line.description,
        .actualSeconds = line.actualSeconds,
        .billedSeconds = line.billedSeconds,
        .isBillable = line.isBillable,
        .hourlyRate = line.hourlyRate,
        .currencyCode = line.currencyCode,
        .amount = line.amount,
        .rounding = line.rounding,
    };
}

Row rowOf(const ExportSummaryRow& row)
{
    static const std::optional<std::string> noDescription;
    return {
        .dayStart = row.dayStart,
        .timeZoneIdentifier = row.timeZoneIdentifier,
        .clientName = row.clientName,
        .projectName = row.projectName,
        .description = noDescription,
        .actualSeconds = row.actualSeconds,
        .billedSeconds = row.billedSeconds,
        .isBillable = row.isBillable,
        .hourlyRate = row.hourlyRate,
        .currencyCode = row.currencyCode,
        .amount = row.amount,
        .rounding = row.rounding,
        .lineCount = row.lineCount,
    };
}

/// "+05:30", with seconds where there are some (local mean times), and "Z" for none.
std::string offsetText(int secondsFromGMT)
{
    if (secondsFromGMT == 0)
        return "Z";
    const char sign = secondsFromGMT < 0 ? '-' : '+';
    const int length = std::abs(secondsFromGMT);
    auto text = fmt::format("{}{:02}:{:02}", sign, length / 3600, length / 60 % 60);
    return length % 60 == 0 ? text : fmt::format("{}:{:02}", text, length % 60);
}

std::string dateText(const Row& row)
{
    return exportCalendar(row.timeZoneIdentifier).civilTime(row.dayStart).date.text();
}

std::string timeText(const Row& row, Instant Interval::* which)
{
    if (!row.interval)
        return {};
    const auto time = exportCalendar(row.timeZoneIdentifier).civilTime(*row.interval.*which);
    return fmt::format("{}T{:02}:{:02}:{:02}{}", time.date.text(), time.hour, time.minute, time.second,
                       offsetText(time.secondsFromGMT));
}

std::string hoursText(const Decimal& seconds)
{
    return (seconds / 3600).rounded(4).text();
}

std::string textOr(const std::optional<Decimal>& number)
{
    return number ? number->text() : std::string();
}

struct Column {
    std::string_view key;
    std::string (*cell)(const Row& row);
    /// Absent: the column is always there.
    bool ExportFieldSet::* field = nullptr;
};

constexpr std::array allColumns{
    Column{"date", dateText},
    Column{"start", [](const Row& row) { return timeText(row, &Interval::start); },
           &ExportFieldSet::includesTimeOfDay},
    Column{"end", [](const Row& row) { return timeText(row, &Interval::end); },
           &ExportFieldSet::includesTimeOfDay},
    Column{"client", [](const Row& row) { return row.clientName; }},
    Column{"project", [](const Row& row) { return row.projectName; }},
    Column{"description", [](const Row& row) { return row.description.value_or(""); },
           &ExportFieldSet::includesDescription},
    Column{"actual_seconds", [](const Row& row) { return row.actualSeconds.rounded(0).text(); }},
    Column{"billed_seconds", [](const Row& row) { return row.billedSeconds.rounded(0).text(); }},
    Column{"actual_hours", [](const Row& row) { return hoursText(row.actualSeconds); }},
    Column{"billed_hours", [](const Row& row) { return hoursText(row.billedSeconds); }},
    Column{"billable", [](const Row& row) { return std::string(row.isBillable ? "yes" : "no"); },
           &ExportFieldSet::includesBillableState},
    Column{"rate", [](const Row& row) { return textOr(row.hourlyRate); },
           &ExportFieldSet::includesRateAndAmount},
    Column{"currency", [](const Row& row) { return row.currencyCode.value_or(""); },
           &ExportFieldSet::includesRateAndAmount},
    // An amount of no currency is no amount to anyone who reads it.
    Column{"amount", [](const Row& row) { return row.currencyCode ? textOr(row.amount) : std::string(); },
           &ExportFieldSet::includesRateAndAmount},
    Column{"rounding", [](const Row& row) { return std::string(rawValue(row.rounding)); }},
};

constexpr Column lineCountColumn{
    "lines", [](const Row& row) { return row.lineCount ? std::to_string(*row.lineCount) : std::string(); }};
/// Readers of summaries rely on the place, whatever column it falls beside.
constexpr std::ptrdiff_t lineCountIndex = 6;

std::vector<Column> columnsFor(const ExportRequest& request)
{
    std::vector<Column> chosen;
    std::ranges::copy_if(allColumns, std::back_inserter(chosen),
                         [&](const Column& column) { return !column.field || request.fields.*column.field; });
    if (request.mode == ExportMode::summarized)
        chosen.insert(chosen.begin() + lineCountIndex, lineCountColumn);
    return chosen;
}

void appendRow(std::string& text, const std::vector<std::string>& cells)
{
    for (const auto& cell : cells) {
        text += cell;
        text += &cell == &cells.back() ? "\r\n" : ",";
    }
}

} // namespace

std::string csvCell(std::string_view text)
{
    std::string cell(text);
    if (cell.find_first_of("=+-@\t\r\n,\"") == std::string::npos)
        return cell;

    const auto isOneOf = [](std::string_view candidates) {
        return [=](std::string_view character) {
            return character.size() == 1 && candidates.contains(character.front());
        };
    };
    const auto characters = graphemes(text);
    if (isOneOf("=+-@\t\r")(characters.front()))
        cell.insert(0, 1, '\'');
    if (std::ranges::none_of(characters, isOneOf(",\"\n\r")))
        return cell;

    std::string quoted = "\"";
    for (const char c : cell)
        quoted.append(c == '"' ? 2 : 1, c);
    return quoted + '"';
}

CSVTable csvTable(const ExportDocumentModel& document)
{
    CSVTable table;
    const auto chosen = columnsFor(document.request);
    for (const auto& column : chosen)
        table.keys.emplace_back(column.key);
    const auto append = [&](const auto& rows) {
        for (const auto& one : rows) {
            const auto row = rowOf(one);
            auto& cells = table.rows.emplace_back();
            for (const auto& column : chosen)
                cells.push_back(column.cell(row));
        }
    };
    if (document.request.mode == ExportMode::detailed)
        append(document.lines);
    else
        append(summaryRows(document.lines));
    return table;
}

std::expected<std::string, ExportTextProblem> csvText(const ExportDocumentModel& document)
{
    std::string text;
    auto table = csvTable(document);
    appendRow(text, table.keys);
    for (auto& cells : table.rows) {
        std::ranges::transform(cells, cells.begin(), csvCell);
        appendRow(text, cells);
    }
    if (!isValidUTF8(text))
        return std::unexpected(ExportTextProblem::notEncodable);
    return text;
}

} // namespace stintbook
