#include "App/RecordedDay.h"

#include "Base/Try.h"
#include "Store/PersistentActivitySegmentRepository.h"
#include "Store/PersistentReviewStore.h"

namespace stintbook {

Stored<RecordedDay> recordedDay(OpenedStore& store, Interval bounds)
{
    RecordedDay day;
    day.segments = TRY(store.segments().segments(bounds));
    day.free = freeSegments(day.segments, bounds, TRY(store.review().items(bounds)));
    std::vector<SegmentID> ids;
    ids.reserve(day.segments.size());
    for (const auto& segment : day.segments)
        ids.push_back(segment.id);
    day.reviews = TRY(store.review().reviews(ids));
    return day;
}

} // namespace stintbook
