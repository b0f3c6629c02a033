#pragma once

#include <cstddef>
#include <expected>
#include <istream>
#include <optional>
#include <string>
#include <string_view>

#include "Base/JsonReader.h"
#include "Capture/TraceLine.h"

namespace stintbook {

/// Reads a trace line by line: JSON Lines, one input a line, the first one a start, instants that fall
/// only where the clock was set, nothing behind a stop. Blank lines and those that start with '#' are
/// skipped. Strict: an unknown key, a wrong type or an impossible value is a problem.
class TraceReader {
public:
    /// The stream outlives the reader.
    explicit TraceReader(std::istream& stream)
        : m_stream(stream)
    {
    }

    /// The next line; none at the end. After a problem the reader is of no further use.
    std::expected<std::optional<TraceLine>, TraceProblem> next();

private:
    std::expected<TraceLine, std::string> read();
    std::expected<void, std::string> checkOrder(const TraceLine& line) const;

    std::istream& m_stream;
    std::string m_text;
    JsonReader m_json{std::string_view()};
    std::size_t m_lineNumber = 0;
    /// That of the last line.
    std::optional<Instant> m_at;
    bool m_hasStopped = false;
};

} // namespace stintbook
