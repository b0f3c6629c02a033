#include "CommandLine/Table.h"

#include <algorithm>

#include <unicode/uchar.h>

#include "Base/Text.h"

namespace stintbook {

namespace {

int cells(std::string_view grapheme)
{
    const auto first = static_cast<UChar32>(codePoints(grapheme).front());
    // Marks of the writing direction and their like take no room.
    if (u_charType(first) == U_FORMAT_CHAR)
        return 0;
    const auto width = u_getIntPropertyValue(first, UCHAR_EAST_ASIAN_WIDTH);
    return width == U_EA_WIDE || width == U_EA_FULLWIDTH ? 2 : 1;
}

bool isControl(std::string_view grapheme)
{
    const auto kind = u_charType(static_cast<UChar32>(codePoints(grapheme).front()));
    return kind == U_CONTROL_CHAR || kind == U_LINE_SEPARATOR || kind == U_PARAGRAPH_SEPARATOR;
}

/// What a terminal would obey becomes room: names and titles come from anywhere.
std::string printable(std::string_view text)
{
    std::string shown;
    for (const auto grapheme : graphemes(text))
        shown += isControl(grapheme) ? " " : grapheme;
    return shown;
}

std::string padded(const std::string& text, int width, Table::Alignment alignment)
{
    const std::string room(static_cast<std::size_t>(std::max(0, width - displayWidth(text))), ' ');
    return alignment == Table::Alignment::left ? text + room : room + text;
}

} // namespace

Table::Table(std::vector<Column> columns)
    : m_columns(std::move(columns))
{
}

void Table::add(std::vector<std::string> cells)
{
    std::ranges::transform(cells, cells.begin(), printable);
    m_rows.push_back(std::move(cells));
}

std::ostream& operator<<(std::ostream& stream, const Table& table)
{
    std::vector<std::vector<std::string>> rows(1);
    for (const auto& column : table.m_columns)
        rows.front().push_back(column.heading);
    rows.insert(rows.end(), table.m_rows.begin(), table.m_rows.end());

    std::vector<int> widths(table.m_columns.size(), 0);
    for (const auto& row : rows) {
        for (std::size_t column = 0; column < row.size(); ++column)
            widths[column] = std::max(widths[column], displayWidth(row[column]));
    }
    for (const auto& row : rows) {
        std::string line;
        for (std::size_t column = 0; column < row.size(); ++column)
            line += (column == 0 ? "" : "  ")
                + padded(row[column], widths[column], table.m_columns[column].alignment);
        line.erase(line.find_last_not_of(' ') + 1);
        stream << line << '\n';
    }
    return stream;
}

int displayWidth(std::string_view text)
{
    int width = 0;
    for (const auto grapheme : graphemes(text))
        width += cells(grapheme);
    return width;
}

std::string shownInCells(std::string_view text, int width)
{
    std::string shown;
    int used = 0;
    for (const auto grapheme : graphemes(text)) {
        const int needed = cells(grapheme);
        if (used + needed > width) {
            while (!shown.empty() && displayWidth(shown) >= width)
                shown.erase(shown.size() - graphemes(shown).back().size());
            return shown + "…";
        }
        shown += grapheme;
        used += needed;
    }
    return shown;
}

} // namespace stintbook
