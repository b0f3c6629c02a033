#pragma once

#include <string_view>

#include "Domain/CalendarContext.h"

namespace stintbook {

/// The calendar in which an exported line's dates are written: that of its zone, or UTC's where the system
/// does not know the zone (any more).
CalendarContext exportCalendar(std::string_view timeZoneIdentifier);

} // namespace stintbook
