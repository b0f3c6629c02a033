#include "App/PreferencesDocument.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <ctime>
#include <sstream>
#include <type_traits>

#include <fmt/format.h>
#include <toml++/toml.h>

namespace stintbook {

namespace {

constexpr double nanosecondsASecond = 1e9;

Instant instantOf(const toml::date_time& moment)
{
    std::tm civil{};
    civil.tm_year = moment.date.year - 1900;
    civil.tm_mon = moment.date.month - 1;
    civil.tm_mday = moment.date.day;
    civil.tm_hour = moment.time.hour;
    civil.tm_min = moment.time.minute - (moment.offset ? moment.offset->minutes : 0);
    civil.tm_sec = moment.time.second;
    return Instant{static_cast<double>(timegm(&civil)) + moment.time.nanosecond / nanosecondsASecond};
}

toml::date_time dateTimeOf(Instant at)
{
    const auto whole = static_cast<std::time_t>(std::floor(at.secondsSinceEpoch));
    std::tm civil{};
    gmtime_r(&whole, &civil);
    const double fraction = at.secondsSinceEpoch - static_cast<double>(whole);
    return {toml::date{civil.tm_year + 1900, civil.tm_mon + 1, civil.tm_mday},
            toml::time{civil.tm_hour, civil.tm_min, civil.tm_sec,
                       static_cast<std::uint32_t>(fraction * nanosecondsASecond)},
            toml::time_offset{}};
}

std::optional<PreferenceValue> preferenceValue(const toml::node& node)
{
    if (const auto* flag = node.as_boolean())
        return PreferenceValue(flag->get());
    if (const auto* number = node.as_integer())
        return PreferenceValue(number->get());
    if (const auto* number = node.as_floating_point())
        return PreferenceValue(number->get());
    if (const auto* text = node.as_string())
        return PreferenceValue(text->get());
    if (const auto* moment = node.as_date_time())
        return PreferenceValue(instantOf(moment->get()));
    return std::nullopt;
}

/// A key as the path of its table and its name there.
struct Place {
    std::string_view table;
    std::string_view name;
};

Place placeOf(std::string_view key)
{
    const auto dot = key.rfind('.');
    if (dot == std::string_view::npos)
        return {{}, key};
    return {key.substr(0, dot), key.substr(dot + 1)};
}

/// The table at a dotted path, made where it is missing and in place of anything that is no table.
toml::table& tableAt(toml::table& root, std::string_view path)
{
    toml::table* table = &root;
    while (!path.empty()) {
        const auto dot = path.find('.');
        const auto name = path.substr(0, dot);
        auto* next = table->get_as<toml::table>(name);
        if (next == nullptr)
            next = table->insert_or_assign(name, toml::table{}).first->second.as_table();
        table = next;
        path = dot == std::string_view::npos ? std::string_view{} : path.substr(dot + 1);
    }
    return *table;
}

void assign(toml::table& root, const Place& place, const std::optional<PreferenceValue>& value)
{
    auto& table = tableAt(root, place.table);
    if (!value) {
        table.erase(place.name);
        return;
    }
    std::visit(
        [&](const auto& stored) {
            if constexpr (std::is_same_v<std::decay_t<decltype(stored)>, Instant>)
                table.insert_or_assign(place.name, dateTimeOf(stored));
            else
                table.insert_or_assign(place.name, stored);
        },
        *value);
}

template <typename Node> std::string written(const Node& node)
{
    std::ostringstream text;
    text << node;
    return std::move(text).str();
}

/// "titleContext = false"
std::string assignment(std::string_view name, const PreferenceValue& value)
{
    toml::table one;
    assign(one, {{}, name}, value);
    return written(one);
}

/// Where a line begins, and the length of the text for a line behind the last. Lines are counted from 1.
std::size_t lineStart(std::string_view text, std::size_t line)
{
    std::size_t at = 0;
    for (; line > 1; --line) {
        const auto end = text.find('\n', at);
        if (end == std::string_view::npos)
            return text.size();
        at = end + 1;
    }
    return at;
}

/// The parser counts characters, not bytes.
std::size_t offset(std::string_view text, const toml::source_position& position)
{
    auto at = lineStart(text, position.line);
    const auto isWithinCharacter = [&] {
        return at < text.size() && (static_cast<unsigned char>(text[at]) & 0xC0U) == 0x80U;
    };
    for (auto column = position.column; column > 1 && at < text.size(); --column) {
        do
            ++at;
        while (isWithinCharacter());
    }
    return at;
}

std::string commentLine(std::string_view comment)
{
    return comment.empty() ? std::string() : fmt::format("# {}\n", comment);
}

/// The text with the lines added at the end of a table, which is made where it is missing.
std::string withLines(std::string text, const toml::table& root, const Place& place, const std::string& lines)
{
    const auto* table = root.at_path(place.table).as_table();
    if (table == nullptr || table->source().begin.line == 0) {
        if (!text.empty() && !text.ends_with('\n'))
            text += '\n';
        return text + fmt::format("{}[{}]\n{}", text.empty() ? "" : "\n", place.table, lines);
    }
    auto lastLine = table->source().end.line;
    for (const auto& [name, node] : *table) {
        if (!node.is_table() && !node.is_array_of_tables())
            lastLine = std::max(lastLine, node.source().end.line);
    }
    if (lineStart(text, lastLine + 1) == text.size() && !text.ends_with('\n'))
        text += '\n';
    return text.insert(lineStart(text, lastLine + 1), lines);
}

std::string withoutLine(std::string text, const toml::node& node, const std::string& comment)
{
    auto begin = lineStart(text, node.source().begin.line);
    const auto end = lineStart(text, node.source().end.line + 1);
    if (!comment.empty() && std::string_view(text).substr(0, begin).ends_with(comment))
        begin -= comment.size();
    return text.erase(begin, end - begin);
}

/// The text with one line of it changed, added or removed.
std::string edited(const std::string& text, const toml::table& root, std::string_view key,
                   const std::optional<PreferenceValue>& value, std::string_view comment)
{
    const auto place = placeOf(key);
    const auto* node = root.at_path(key).node();
    if (!value)
        return node == nullptr ? text : withoutLine(text, *node, commentLine(comment));
    const auto line = assignment(place.name, *value);
    if (node == nullptr)
        return withLines(text, root, place, commentLine(comment) + line + '\n');
    const auto begin = offset(text, node->source().begin);
    const auto end = offset(text, node->source().end);
    return text.substr(0, begin) + line.substr(place.name.size() + std::string_view(" = ").size())
        + text.substr(end);
}

} // namespace

struct PreferencesDocument::Meaning {
    toml::table root;
};

std::expected<PreferencesDocument, std::string> PreferencesDocument::parse(std::string text)
{
    try {
        auto meaning = std::make_shared<const Meaning>(toml::parse(text));
        return PreferencesDocument(std::move(text), std::move(meaning));
    } catch (const toml::parse_error& error) {
        return std::unexpected(fmt::format("{} (line {})", error.description(), error.source().begin.line));
    }
}

std::optional<PreferenceValue> PreferencesDocument::value(std::string_view key) const
{
    if (!m_meaning)
        return std::nullopt;
    const auto node = m_meaning->root.at_path(key);
    return node ? preferenceValue(*node.node()) : std::nullopt;
}

void PreferencesDocument::set(std::string_view key, const std::optional<PreferenceValue>& value,
                              std::string_view comment)
{
    // Not copied: a copy does not know where in the text it stands.
    static const toml::table nothing;
    const auto& root = m_meaning ? m_meaning->root : nothing;
    auto meaning = root;
    assign(meaning, placeOf(key), value);
    if (meaning == root)
        return;
    auto changed = parse(edited(m_text, root, key, value, comment));
    if (!changed || changed->m_meaning->root != meaning)
        changed = parse(written(meaning) + '\n');
    *this = *std::move(changed);
}

} // namespace stintbook
