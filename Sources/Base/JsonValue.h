#pragma once

#include <cstdint>
#include <expected>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

#include "Base/Decimal.h"
#include "Base/Identifier.h"
#include "Base/Instant.h"
#include "Base/RawValue.h"
#include "Base/Try.h"

/// JSON that is read piece by piece and strictly: each problem is told with its line and its place in the
/// document, numbers are kept as they are written, and what is not asked for is refused by its name.
namespace stintbook {

struct JsonProblem {
    /// From 1.
    std::size_t line = 1;
    /// "segments[3].context.kind"; empty for the document as a whole.
    std::string path;
    /// Follows the path in a sentence: "is no text".
    std::string reason;
};

template <typename T> using JsonRead = std::expected<T, JsonProblem>;

/// "Line 12: segments[3].kind is no text", without a full stop.
std::string message(const JsonProblem& problem);

/// The problem as it is seen from further outside: `step` is a key, or "[3]".
JsonProblem within(std::string_view step, JsonProblem problem);

/// One value with everything below it. Valid until the reader that gave it reads another.
class JsonValue {
public:
    enum class Kind : std::uint8_t { null, boolean, number, text, array, object };

    std::size_t line() const { return node().line; }
    std::unexpected<JsonProblem> problem(std::string reason) const;

    JsonRead<bool> boolean() const;
    JsonRead<std::string_view> text() const;
    /// As it is written.
    JsonRead<std::string_view> number() const;

    template <typename T>
    JsonRead<std::vector<T>> elements(JsonRead<T> (*read)(const JsonValue& element)) const;

private:
    friend class JsonObject;
    friend class JsonReader;

    struct Node {
        Kind kind = Kind::null;
        bool flag = false;
        std::size_t line = 1;
        /// Text or number, and the key of a member, in the texts of the tape.
        std::size_t offset = 0;
        std::size_t length = 0;
        std::size_t keyOffset = 0;
        std::size_t keyLength = 0;
        /// The first node behind everything below this one.
        std::size_t next = 0;
    };
    /// A value and what it holds, one node after the other as they stand in the document.
    struct Tape {
        std::vector<Node> nodes;
        std::string texts;
    };

    JsonValue(const Tape& tape, std::size_t index)
        : m_tape(&tape)
        , m_index(index)
    {
    }
    const Node& node() const { return m_tape->nodes[m_index]; }
    std::string_view ownText() const
    {
        return std::string_view(m_tape->texts).substr(node().offset, node().length);
    }
    std::string_view key() const
    {
        return std::string_view(m_tape->texts).substr(node().keyOffset, node().keyLength);
    }

    const Tape* m_tape;
    std::size_t m_index;
};

/// The members of one object, each of which is to be asked for once, by a function that reads its value.
class JsonObject {
public:
    /// What a function makes of a value.
    template <typename Read> using ReadBy = typename std::invoke_result_t<Read, const JsonValue&>::value_type;

    static JsonRead<JsonObject> of(const JsonValue& value);

    template <typename Read> JsonRead<ReadBy<Read>> required(std::string_view key, const Read& read)
    {
        const auto value = find(key);
        if (!value)
            return m_object.problem(std::string("has no \"").append(key).append("\""));
        return readMember(key, *value, read);
    }
    template <typename Read>
    JsonRead<std::optional<ReadBy<Read>>> optional(std::string_view key, const Read& read)
    {
        const auto value = find(key);
        if (!value)
            return std::nullopt;
        return TRY(readMember(key, *value, read));
    }
    /// A required array.
    template <typename T>
    JsonRead<std::vector<T>> list(std::string_view key, JsonRead<T> (*read)(const JsonValue&))
    {
        const auto value = find(key);
        if (!value)
            return m_object.problem(std::string("has no \"").append(key).append("\""));
        auto elements = value->elements(read);
        if (!elements)
            return std::unexpected(within(key, std::move(elements).error()));
        return elements;
    }
    /// The first one that was not asked for yet.
    std::optional<std::string_view> nextKey() const;
    /// To be called last: a key that was not asked for, or stands there twice, is a problem.
    JsonRead<void> mustHoldNothingElse() const;

    /// Of the member, or where there is none, of the object.
    std::unexpected<JsonProblem> problem(std::string_view key, std::string reason);

private:
    explicit JsonObject(const JsonValue& object)
        : m_object(object)
        , m_cursor(object.m_index + 1)
    {
    }

    std::optional<JsonValue> find(std::string_view key);
    template <typename Read>
    static JsonRead<ReadBy<Read>> readMember(std::string_view key, const JsonValue& value, const Read& read)
    {
        auto result = read(value);
        if (!result)
            return std::unexpected(within(key, std::move(result).error()));
        return result;
    }

    JsonValue m_object;
    std::vector<std::string_view> m_asked;
    std::size_t m_foundCount = 0;
    /// Where the next key probably is: documents of ours have their keys in order, and so are they asked for.
    std::size_t m_cursor;
};

template <typename T>
JsonRead<std::vector<T>> JsonValue::elements(JsonRead<T> (*read)(const JsonValue& element)) const
{
    if (node().kind != Kind::array)
        return problem("is no list");
    std::vector<T> elements;
    for (auto index = m_index + 1; index < node().next; index = m_tape->nodes[index].next) {
        auto element = read(JsonValue(*m_tape, index));
        if (!element)
            return std::unexpected(
                within("[" + std::to_string(elements.size()) + "]", std::move(element).error()));
        elements.push_back(*std::move(element));
    }
    return elements;
}

// How the values of records are written.
JsonRead<bool> jsonFlag(const JsonValue& value);
JsonRead<std::string> jsonText(const JsonValue& value);
JsonRead<int> jsonInteger(const JsonValue& value);
/// The nearest one to what is written.
JsonRead<double> jsonDouble(const JsonValue& value);
/// The years 1 to 9999, which calendars cover: from the first instant on, before the second.
inline constexpr Instant yearOne{-62'135'596'800.0};
inline constexpr Instant yearTenThousand{253'402'300'800.0};
/// In those years.
JsonRead<Instant> jsonInstant(const JsonValue& value);
/// Exact, and not negative.
JsonRead<Decimal> jsonAmount(const JsonValue& value);
JsonRead<UUID> jsonUUID(const JsonValue& value);
template <typename ID> JsonRead<ID> jsonIdentifier(const JsonValue& value)
{
    return ID{TRY(jsonUUID(value))};
}
template <typename E> JsonRead<E> jsonCase(const JsonValue& value)
{
    const auto text = TRY(value.text());
    if (const auto found = fromRawValue<E>(text))
        return *found;
    return value.problem("cannot be \"" + std::string(text) + "\"");
}

} // namespace stintbook
