#pragma once

#include <array>
#include <optional>
#include <string_view>
#include <utility>

namespace stintbook {

/// An enumeration with stored texts specialises this with one table, in the enumeration's order:
///
///     template <> struct RawValues<ActivityKind> {
///         static constexpr std::array table{std::pair{ActivityKind::work, "work"}, …};
///     };
///
/// The texts are what the store, exports and the command line's JSON hold; they never change.
template <typename E> struct RawValues;

template <typename E> constexpr std::string_view rawValue(E value)
{
    for (const auto& [candidate, text] : RawValues<E>::table) {
        if (candidate == value)
            return text;
    }
    return {};
}

/// Absent when the text names no case: nothing falls back to a default.
template <typename E> constexpr std::optional<E> fromRawValue(std::string_view text)
{
    for (const auto& [value, candidate] : RawValues<E>::table) {
        if (candidate == text)
            return value;
    }
    return std::nullopt;
}

} // namespace stintbook
