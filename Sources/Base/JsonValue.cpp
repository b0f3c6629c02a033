#include "Base/JsonValue.h"

#include <algorithm>

#include <fmt/format.h>

#include "Base/NumberText.h"

namespace stintbook {

std::string message(const JsonProblem& problem)
{
    return fmt::format("Line {}: {} {}", problem.line, problem.path.empty() ? "the document" : problem.path,
                       problem.reason);
}

JsonProblem within(std::string_view step, JsonProblem problem)
{
    const bool needsPoint = !problem.path.empty() && !problem.path.starts_with('[');
    problem.path.insert(0, needsPoint ? std::string(step) + "." : std::string(step));
    return problem;
}

std::unexpected<JsonProblem> JsonValue::problem(std::string reason) const
{
    return std::unexpected(JsonProblem{line(), {}, std::move(reason)});
}

JsonRead<bool> JsonValue::boolean() const
{
    if (node().kind != Kind::boolean)
        return problem("is neither true nor false");
    return node().flag;
}

JsonRead<std::string_view> JsonValue::text() const
{
    if (node().kind != Kind::text)
        return problem("is no text");
    return ownText();
}

JsonRead<std::string_view> JsonValue::number() const
{
    if (node().kind != Kind::number)
        return problem("is no number");
    return ownText();
}

JsonRead<JsonObject> JsonObject::of(const JsonValue& value)
{
    if (value.node().kind != JsonValue::Kind::object)
        return value.problem("is no object");
    return JsonObject(value);
}

std::optional<JsonValue> JsonObject::find(std::string_view key)
{
    m_asked.push_back(key);
    const auto& nodes = m_object.m_tape->nodes;
    const auto first = m_object.m_index + 1;
    const auto end = m_object.node().next;
    // Around, from where the last one was found.
    const auto search = [&](std::size_t from, std::size_t to) -> std::optional<JsonValue> {
        for (auto index = from; index < to; index = nodes[index].next) {
            const JsonValue member(*m_object.m_tape, index);
            if (member.key() == key) {
                ++m_foundCount;
                m_cursor = nodes[index].next;
                return member;
            }
        }
        return std::nullopt;
    };
    auto found = search(m_cursor, end);
    return found ? found : search(first, m_cursor);
}

std::optional<std::string_view> JsonObject::nextKey() const
{
    const auto& nodes = m_object.m_tape->nodes;
    for (auto index = m_object.m_index + 1; index < m_object.node().next; index = nodes[index].next)
        if (const JsonValue member(*m_object.m_tape, index);
            std::ranges::find(m_asked, member.key()) == m_asked.end())
            return member.key();
    return std::nullopt;
}

JsonRead<void> JsonObject::mustHoldNothingElse() const
{
    const auto& nodes = m_object.m_tape->nodes;
    std::vector<std::string_view> met;
    std::size_t count = 0;
    for (auto index = m_object.m_index + 1; index < m_object.node().next; index = nodes[index].next)
        ++count;
    if (count == m_foundCount)
        return {};
    for (auto index = m_object.m_index + 1; index < m_object.node().next; index = nodes[index].next) {
        const JsonValue member(*m_object.m_tape, index);
        if (std::ranges::find(m_asked, member.key()) == m_asked.end())
            return member.problem(fmt::format("has an unknown key \"{}\"", member.key()));
        if (std::ranges::find(met, member.key()) != met.end())
            return member.problem(fmt::format("has \"{}\" twice", member.key()));
        met.push_back(member.key());
    }
    return {};
}

std::unexpected<JsonProblem> JsonObject::problem(std::string_view key, std::string reason)
{
    const auto member = find(key);
    auto problem = (member ? *member : m_object).problem(std::move(reason));
    return std::unexpected(within(key, std::move(problem).error()));
}

JsonRead<bool> jsonFlag(const JsonValue& value)
{
    return value.boolean();
}

JsonRead<std::string> jsonText(const JsonValue& value)
{
    return std::string(TRY(value.text()));
}

JsonRead<int> jsonInteger(const JsonValue& value)
{
    if (const auto number = numberIn<int>(TRY(value.number())))
        return *number;
    return value.problem("is no whole number of 32 bits");
}

JsonRead<double> jsonDouble(const JsonValue& value)
{
    if (const auto number = numberIn<double>(TRY(value.number())))
        return *number;
    return value.problem("is beyond the numbers that can be stored");
}

JsonRead<Instant> jsonInstant(const JsonValue& value)
{
    const Instant at{TRY(jsonDouble(value))};
    if (at < yearOne || at >= yearTenThousand)
        return value.problem("lies outside the years 1 to 9999");
    return at;
}

JsonRead<Decimal> jsonAmount(const JsonValue& value)
{
    const auto number = Decimal::parse(TRY(value.number()));
    if (!number)
        return value.problem("has more digits than an exact number can have");
    if (number->isNegative())
        return value.problem("is negative");
    return *number;
}

JsonRead<UUID> jsonUUID(const JsonValue& value)
{
    if (const auto id = UUID::parse(TRY(value.text())))
        return *id;
    return value.problem("is no identifier");
}

} // namespace stintbook
