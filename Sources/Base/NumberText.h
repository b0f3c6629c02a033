#pragma once

#include <charconv>
#include <optional>
#include <string_view>
#include <system_error>

namespace stintbook {

/// The number that a whole text stands for, in digits as programs write them: without a plus sign, spaces or
/// separators. Absent for anything else, and for what the type cannot hold.
template <typename Number> std::optional<Number> numberIn(std::string_view text)
{
    Number number{};
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number);
    return error == std::errc() && stop == end ? std::optional(number) : std::nullopt;
}

} // namespace stintbook
