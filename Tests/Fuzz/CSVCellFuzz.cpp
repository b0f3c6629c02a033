// A written cell gives its text back, guard apart: an unquoted one as it stands, a quoted one with its
// quotes taken off. What is quoted holds quotes only in pairs, and what a spreadsheet would evaluate at the
// start of a cell has an apostrophe before it.

#include <cstddef>
#include <cstdint>
#include <string>

#include "Base/Text.h"
#include "Export/CSVDocument.h"
#include "Require.h"

namespace {

std::string unquoted(std::string_view cell)
{
    if (!cell.starts_with('"'))
        return std::string(cell);
    require(cell.size() >= 2 && cell.ends_with('"'));
    std::string text;
    for (std::size_t i = 1; i + 1 < cell.size(); ++i) {
        text += cell[i];
        if (cell[i] == '"') {
            require(i + 2 < cell.size() && cell[i + 1] == '"');
            ++i;
        }
    }
    return text;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string text(data, data + size);
    const auto cell = stintbook::csvCell(text);
    const auto characters = stintbook::graphemes(text);
    // A quote with a combining mark is another character, which brings no quotes.
    if (!characters.empty() && characters.front().size() > 1 && text.front() == '"')
        return 0;

    const auto plain = unquoted(cell);
    const bool isGuarded = plain != text;
    require(!isGuarded || plain == "'" + text);
    if (!characters.empty() && characters.front().size() == 1)
        require(isGuarded == std::string_view("=+-@\t\r").contains(text.front()));

    bool hasSeparator = false;
    for (const auto character : characters)
        hasSeparator |= character == "," || character == "\n" || character == "\r" || character == "\"";
    require(cell.starts_with('"') == hasSeparator);
    return 0;
}
