#include "Domain/LocalDay.h"

#include <absl/time/civil_time.h>
#include <fmt/format.h>

#include "Base/NumberText.h"

namespace stintbook {

namespace {

std::optional<int> number(std::string_view digits)
{
    return digits.front() == '-' ? std::nullopt : numberIn<int>(digits);
}

CivilDate civilDate(absl::CivilDay day)
{
    return {static_cast<int>(day.year()), day.month(), day.day()};
}

} // namespace

std::optional<CivilDate> CivilDate::parse(std::string_view text)
{
    if (text.size() != 10 || text[4] != '-' || text[7] != '-')
        return std::nullopt;
    const auto year = number(text.substr(0, 4));
    const auto month = number(text.substr(5, 2));
    const auto day = number(text.substr(8, 2));
    if (!year || *year < 1 || !month || !day)
        return std::nullopt;
    const CivilDate date{*year, *month, *day};
    // Civil arithmetic carries a thirtieth of February over into March.
    return civilDate(absl::CivilDay(*year, *month, *day)) == date ? std::optional(date) : std::nullopt;
}

std::string CivilDate::text() const
{
    return fmt::format("{:04}-{:02}-{:02}", year, month, day);
}

CivilDate CivilDate::plusDays(int days) const
{
    return civilDate(absl::CivilDay(year, month, day) + days);
}

} // namespace stintbook
