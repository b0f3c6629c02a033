#include "Export/ExportCalendar.h"

namespace stintbook {

CalendarContext exportCalendar(std::string_view timeZoneIdentifier)
{
    auto calendar = CalendarContext::inZone(timeZoneIdentifier);
    return calendar ? *std::move(calendar) : CalendarContext::inZone("UTC").value();
}

} // namespace stintbook
