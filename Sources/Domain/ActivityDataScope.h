#pragma once

#include <optional>
#include <variant>

#include "Base/Instant.h"
#include "Domain/CalendarContext.h"
#include "Domain/LocalDay.h"

namespace stintbook {

/// Local calendar days from the first through the last, which does not begin before it.
class LocalDayRange {
public:
    /// Absent where `through` begins before `from`.
    static std::optional<LocalDayRange> between(LocalDay from, LocalDay through);

    const LocalDay& from() const { return m_from; }
    const LocalDay& through() const { return m_through; }

    friend bool operator==(const LocalDayRange&, const LocalDayRange&) = default;

private:
    LocalDayRange(LocalDay from, LocalDay through);

    LocalDay m_from;
    LocalDay m_through;
};

/// Every day earlier than the cutoff day.
struct DaysBefore {
    LocalDay cutoff;

    friend bool operator==(const DaysBefore&, const DaysBefore&) = default;
};

struct AllHistory {
    friend bool operator==(const AllHistory&, const AllHistory&) = default;
};

/// Which recorded history is to be deleted. Days before a cutoff lose their observed activity alone; a range
/// and all history lose their reviews, reviewed work and approvals with it. Export snapshots always stay.
using ActivityDataScope = std::variant<LocalDayRange, DaysBefore, AllHistory>;

/// The time that a scope takes in: to plus or minus infinity where it is open. A day whose zone the system
/// does not know is bounded by the calendar's.
Interval extent(const ActivityDataScope& scope, const CalendarContext& calendar);
/// The calendar in which a scope's days are counted: that of the days it names, else the given one.
CalendarContext countingCalendar(const ActivityDataScope& scope, const CalendarContext& calendar);

/// What the user asked to delete.
using ActivityDeletionRequest = std::variant<LocalDayRange, AllHistory>;
ActivityDataScope scopeOf(const ActivityDeletionRequest& request);

} // namespace stintbook
