#pragma once

#include <cstddef>
#include <map>
#include <optional>

#include "Base/Instant.h"

namespace stintbook {

/// How much of a run's time each application accounts for. Knows the dominant one at any moment: the one
/// with most time; of equals, the one that is seen first.
///
/// Totals are added up in any order. Recorded times, which are multiples of 2^-22 s, have exact sums, so
/// that the order does not show.
class ApplicationTotals {
public:
    /// Equal for equal applications.
    using Number = std::size_t;

    /// `firstSeen` is the place at which the application first occurs among all entries of the day. The
    /// length is above zero.
    void add(Number application, Seconds length, std::size_t firstSeen);
    void add(ApplicationTotals other);

    std::optional<Number> dominant() const { return m_dominant; }

private:
    struct Total {
        Seconds time;
        std::size_t firstSeen = 0;
    };

    std::map<Number, Total> m_totals;
    std::optional<Number> m_dominant;
};

} // namespace stintbook
