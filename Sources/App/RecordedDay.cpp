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
    day.reviews = TRY(store.review().reviews(bounds));
    return day;
}

} // namespace stintbook
