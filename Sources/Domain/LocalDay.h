#pragma once

#include <compare>
#include <expected>
#include <optional>
#include <string>
#include <string_view>

#include "Base/Instant.h"

namespace stintbook {

/// One calendar day as its user lived it. The same date in two zones is two days.
struct LocalDay {
    /// The first instant of the day in the zone below.
    Instant start;
    /// The zone in which the day was cut, as the system names it ("Europe/Berlin").
    std::string timeZoneIdentifier;

    friend bool operator==(const LocalDay&, const LocalDay&) = default;
    friend auto operator<=>(const LocalDay&, const LocalDay&) = default;
};

/// A date of the Gregorian calendar. Years 1 to 9999.
struct CivilDate {
    int year = 1970;
    int month = 1;
    int day = 1;

    /// "yyyy-MM-dd" of a date that exists; absent for anything else.
    static std::optional<CivilDate> parse(std::string_view text);
    std::string text() const;
    CivilDate plusDays(int days) const;

    friend auto operator<=>(const CivilDate&, const CivilDate&) = default;
};

} // namespace stintbook
