#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "Base/Decimal.h"
#include "Base/Identifier.h"
#include "Base/Instant.h"

namespace stintbook {

/// Writes one JSON document at the end of a string, compact or indented; the string may be emptied in between. Slashes are not escaped, text is UTF-8,
/// doubles are written as `shortestText` has them, decimals with all their digits, UUIDs in upper case.
/// Ill-formed bytes become U+FFFD, a double that is not finite null. The caller emits keys in code-point
/// order.
class JsonWriter {
public:
    enum class Layout { compact, indented };
    explicit JsonWriter(std::string& output, Layout layout = Layout::compact)
        : m_output(output)
        , m_layout(layout)
    {
    }
    ~JsonWriter() = default;
    JsonWriter(const JsonWriter&) = delete;
    JsonWriter& operator=(const JsonWriter&) = delete;

    template <typename Fill> void object(Fill fill)
    {
        beginObject();
        fill();
        endObject();
    }
    template <typename Items, typename WriteItem> void array(const Items& items, WriteItem writeItem)
    {
        beginArray();
        for (const auto& item : items)
            writeItem(item);
        endArray();
    }
    void beginObject() { begin('{'); }
    void endObject() { end('}'); }
    void beginArray() { begin('['); }
    void endArray() { end(']'); }
    void key(std::string_view name);

    void value(std::string_view text);
    void value(const std::string& text) { value(std::string_view(text)); }
    void value(const char* text) { value(std::string_view(text)); }
    void value(bool flag);
    void value(std::int64_t number);
    void value(int number) { value(static_cast<std::int64_t>(number)); }
    void value(double number);
    void value(Instant at) { value(at.secondsSinceEpoch); }
    void value(Seconds length) { value(length.value); }
    void value(const Decimal& number);
    void value(const UUID& id);
    template <typename Kind> void value(const Identifier<Kind>& id) { value(id.uuid); }

    template <typename T> void member(std::string_view name, const T& what)
    {
        key(name);
        value(what);
    }
    /// Left out when absent.
    template <typename T> void member(std::string_view name, const std::optional<T>& what)
    {
        if (what)
            member(name, *what);
    }

private:
    void begin(char bracket);
    void end(char bracket);
    /// What comes before a key, or before a value that has none.
    void separate();
    void breakLine();
    void appendQuoted(std::string_view text);
    void appendRaw(std::string_view text);

    std::string& m_output;
    Layout m_layout;
    std::size_t m_depth = 0;
    bool m_isFirst = true;
    bool m_isBehindKey = false;
};

/// The fewest digits that read back to the same double: in plain notation from 1e-7 up to 1e21, beyond
/// that with an exponent. The number is finite.
std::string shortestText(double number);

} // namespace stintbook
