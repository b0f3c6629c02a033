#pragma once

#include <functional>
#include <string_view>
#include <utility>

#include <fmt/format.h>

/// The operational log: the journal under the application's identifier; stderr where there is no journal,
/// and on a terminal as well. Any thread may write.
namespace stintbook::log {

enum class Level { normal, error };

void write(Level level, std::string_view sentence);

using Sink = std::function<void(Level, std::string_view sentence)>;
/// Sends what is written from now on to `sink` alone, for tests; an empty one restores the journal. Calls
/// of a sink do not overlap. Answers the sink that was in force.
Sink replaceSink(Sink sink);

template <typename... Arguments> void event(fmt::format_string<Arguments...> format, Arguments&&... arguments)
{
    write(Level::normal, fmt::format(format, std::forward<Arguments>(arguments)...));
}

template <typename... Arguments> void error(fmt::format_string<Arguments...> format, Arguments&&... arguments)
{
    write(Level::error, fmt::format(format, std::forward<Arguments>(arguments)...));
}

} // namespace stintbook::log
