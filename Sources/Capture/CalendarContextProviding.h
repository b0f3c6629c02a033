#pragma once

#include <functional>

#include "Domain/CalendarContext.h"

namespace stintbook {

/// Gives the calendar in force and reports, on capture's thread, when the system's zone changes.
class CalendarContextProviding {
public:
    using Follower = std::function<void(const CalendarContext&)>;

    virtual ~CalendarContextProviding() = default;
    virtual CalendarContext current() = 0;
    virtual void follow(Follower follower) = 0;
    virtual void stop() = 0;
};

} // namespace stintbook
