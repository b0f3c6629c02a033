#pragma once

#include <functional>
#include <memory>

#include "Base/TimeSource.h"
#include "Domain/CalendarContext.h"

namespace stintbook {

/// Tells of each local day that has begun; of one that began while the machine slept, once it is awake.
///
/// Confined to the executor of its timers.
class Midnights {
public:
    struct Collaborators {
        std::function<CalendarContext()> calendar;
        /// Both outlive this.
        TimeSource& timeSource;
        Timers& timers;
    };

    Midnights(Collaborators collaborators, std::function<void()> dayBegan);

    /// The system's time zone is another one: the next midnight comes at another time.
    void calendarChanged() { waitForNext(); }

private:
    void waitForNext();

    Collaborators m_collaborators;
    std::function<void()> m_dayBegan;
    std::unique_ptr<Timers::Scheduled> m_next;
};

} // namespace stintbook
