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

/// The value of an expected, or an early return of its error from the enclosing function.
#define TRY(expression)                                                                                      \
    __extension__({                                                                                          \
        auto stintbookResult = (expression);                                                                 \
        if (!stintbookResult)                                                                                \
            return std::unexpected(std::move(stintbookResult).error());                                      \
        ::stintbook::valueOf(std::move(stintbookResult));                                                    \
    })
