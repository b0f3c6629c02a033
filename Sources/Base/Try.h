#pragma once

#include <expected>
#include <type_traits>
#include <utility>

namespace stintbook {

/// What `TRY` hands back for an expected without a value.
template <typename E> void valueOf(std::expected<void, E>&&)
{
}

template <typename T, typename E> T valueOf(std::expected<T, E>&& result)
{
    return *std::move(result);
}

} // namespace stintbook

// One TRY may stand inside another, so each names its result differently.
#define STINTBOOK_TRY(expression, result)                                                                    \
    __extension__({                                                                                          \
        auto result = (expression);                                                                          \
        if (!result)                                                                                         \
            return std::unexpected(std::move(result).error());                                               \
        ::stintbook::valueOf(std::move(result));                                                             \
    })
#define STINTBOOK_JOINED(first, second) first##second
#define STINTBOOK_NUMBERED(name, number) STINTBOOK_JOINED(name, number)

/// The value of an expected, or an early return of its error from the enclosing function.
#define TRY(expression) STINTBOOK_TRY(expression, STINTBOOK_NUMBERED(stintbookResult, __COUNTER__))
