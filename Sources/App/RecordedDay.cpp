#include "App/RecordedDay.h"

#include <utility>

#include "Base/Try.h"
#include "Store/PersistentActivitySegmentRepository.h"
#include "Store/PersistentReviewStore.h"

namespace stintbook {

Stored<RecordedDay> recordedDay(OpenedStore& store, Interval bounds)
{
    return recordedDay(store, bounds, TRY(store.segments().segments(bounds)));
}

Stored<RecordedDay> recordedDay(OpenedStore& store, Interval bounds, std::vector<ActivitySegment> segments)
{
    RecordedDay day;
    day.segments = std::move(segments);
    day.free = freeSegments(day.segments, bounds, TRY(store.review().items(bounds)));
    std::vector<SegmentID> ids;
    ids.reserve(day.segments.size());
    for (const auto& segment : day.segments)
        ids.push_back(segment.id);
    day.reviews = TRY(store.review().reviews(ids));
    return day;
}

} // namespace stintbook
