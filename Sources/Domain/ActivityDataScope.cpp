#include "Domain/ActivityDataScope.h"

#include <limits>
#include <utility>

namespace stintbook {

namespace {

constexpr Instant never{std::numeric_limits<double>::infinity()};
constexpr Instant ever{-std::numeric_limits<double>::infinity()};

} // namespace

LocalDayRange::LocalDayRange(LocalDay from, LocalDay through)
    : m_from(std::move(from))
    , m_through(std::move(through))
{
}

std::optional<LocalDayRange> LocalDayRange::between(LocalDay from, LocalDay through)
{
    if (through.start < from.start)
        return std::nullopt;
    return LocalDayRange(std::move(from), std::move(through));
}

Interval extent(const ActivityDataScope& scope, const CalendarContext& calendar)
{
    if (const auto* range = std::get_if<LocalDayRange>(&scope))
        return {range->from().start, calendar.boundsOf(range->through()).end};
    if (const auto* before = std::get_if<DaysBefore>(&scope))
        return {ever, before->cutoff.start};
    return {ever, never};
}

CalendarContext countingCalendar(const ActivityDataScope& scope, const CalendarContext& calendar)
{
    const LocalDay* day = nullptr;
    if (const auto* range = std::get_if<LocalDayRange>(&scope))
        day = &range->from();
    else if (const auto* before = std::get_if<DaysBefore>(&scope))
        day = &before->cutoff;
    if (day == nullptr)
        return calendar;
    return CalendarContext::inZone(day->timeZoneIdentifier).value_or(calendar);
}

ActivityDataScope scopeOf(const ActivityDeletionRequest& request)
{
    return std::visit([](const auto& which) -> ActivityDataScope { return which; }, request);
}

} // namespace stintbook
