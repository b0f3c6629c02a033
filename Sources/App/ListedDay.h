#pragma once

#include <cstdint>
#include <map>
#include <optional>

#include "Billing/RecordsDayState.h"
#include "Domain/CalendarContext.h"
#include "Review/DaySummary.h"

namespace stintbook {

/// A day in the list of days.
struct ListedDay {
    DaySummary summary;
    RecordsDayState recordsState = RecordsDayState::needsReview;
    Seconds unreviewedDuration;
    bool hasReviewedWork = false;
};

/// The days that were listed, as long as nobody writes to the store.
class ListMemory {
public:
    /// Of the days as that calendar cuts them in the store's state of that version; empty at first.
    std::map<LocalDay, ListedDay>& days(const CalendarContext& calendar, std::int64_t dataVersion)
    {
        if (m_calendar != calendar || m_dataVersion != dataVersion)
            m_days.clear();
        m_calendar = calendar;
        m_dataVersion = dataVersion;
        return m_days;
    }

private:
    std::map<LocalDay, ListedDay> m_days;
    std::optional<CalendarContext> m_calendar;
    std::int64_t m_dataVersion = 0;
};

} // namespace stintbook
