#include "Export/ExportRequest.h"

#include <utility>

#include "Export/ExportCalendar.h"

namespace stintbook {

ExportRequest ExportRequest::normalised() const
{
    auto request = *this;
    if (request.rangeEnd.start < request.rangeStart.start)
        std::swap(request.rangeStart, request.rangeEnd);
    request.fields = fields.normalised(mode);
    return request;
}

Interval ExportRequest::interval() const
{
    return {rangeStart.start, exportCalendar(rangeEnd.timeZoneIdentifier).nextDayStart(rangeEnd.start)};
}

} // namespace stintbook
