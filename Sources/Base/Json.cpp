#include "Base/Json.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <iterator>

#include <fmt/format.h>

#include "Base/Text.h"

namespace stintbook {

namespace {

/// How a byte of a text is written: as itself, as a letter behind a backslash, or by its number.
constexpr char plain = 0;
constexpr char numbered = 'u';

constexpr auto escapes = [] {
    std::array<char, 256> table{};
    for (std::size_t byte = 0; byte < 0x20; ++byte)
        table[byte] = numbered;
    table['\b'] = 'b';
    table['\f'] = 'f';
    table['\n'] = 'n';
    table['\r'] = 'r';
    table['\t'] = 't';
    table['"'] = '"';
    table['\\'] = '\\';
    return table;
}();

char escapeOf(char character)
{
    return escapes[static_cast<unsigned char>(character)];
}

} // namespace

void JsonWriter::begin(char bracket)
{
    separate();
    m_output += bracket;
    ++m_depth;
    m_isFirst = true;
}

void JsonWriter::end(char bracket)
{
    --m_depth;
    if (!m_isFirst)
        breakLine();
    m_output += bracket;
    m_isFirst = false;
}

void JsonWriter::separate()
{
    if (m_isBehindKey) {
        m_isBehindKey = false;
        return;
    }
    if (!m_isFirst)
        m_output += ',';
    if (m_depth > 0)
        breakLine();
    m_isFirst = false;
}

void JsonWriter::breakLine()
{
    if (m_layout == Layout::compact)
        return;
    m_output += '\n';
    m_output.append(2 * m_depth, ' ');
}

void JsonWriter::appendQuoted(std::string_view text)
{
    m_output += '"';
    while (!text.empty()) {
        const auto special =
            std::ranges::find_if(text, [](char character) { return escapeOf(character) != plain; });
        m_output.append(text.begin(), special);
        text.remove_prefix(static_cast<std::size_t>(special - text.begin()));
        if (text.empty())
            break;
        const auto escape = escapeOf(text.front());
        m_output += '\\';
        m_output += escape;
        if (escape == numbered)
            fmt::format_to(std::back_inserter(m_output), "{:04X}", static_cast<unsigned char>(text.front()));
        text.remove_prefix(1);
    }
    m_output += '"';
}

void JsonWriter::appendRaw(std::string_view text)
{
    separate();
    m_output += text;
}

void JsonWriter::key(std::string_view name)
{
    separate();
    appendQuoted(name);
    m_output += m_layout == Layout::compact ? ":" : ": ";
    m_isBehindKey = true;
}

void JsonWriter::value(std::string_view text)
{
    separate();
    appendQuoted(isValidUTF8(text) ? text : wellFormed(text));
}

void JsonWriter::value(bool flag)
{
    appendRaw(flag ? "true" : "false");
}

void JsonWriter::value(std::int64_t number)
{
    appendRaw(fmt::format_int(number).c_str());
}

void JsonWriter::value(double number)
{
    appendRaw(std::isfinite(number) ? shortestText(number) : "null");
}

void JsonWriter::value(const Decimal& number)
{
    appendRaw(number.text());
}

void JsonWriter::value(const UUID& id)
{
    separate();
    appendQuoted(id.upperCaseText());
}

std::string shortestText(double number)
{
    if (number == 0)
        return "0";
    const double magnitude = std::abs(number);
    const auto format =
        magnitude >= 1e-7 && magnitude < 1e21 ? std::chars_format::fixed : std::chars_format::scientific;
    std::array<char, 32> text{};
    const auto end = std::to_chars(text.data(), text.data() + text.size(), number, format).ptr;
    return {text.data(), end};
}

} // namespace stintbook
