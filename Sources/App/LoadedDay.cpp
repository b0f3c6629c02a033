#include "App/LoadedDay.h"

#include <algorithm>
#include <unordered_set>
#include <utility>

#include "App/ClientBook.h"
#include "App/RecordedDay.h"
#include "Base/Try.h"
#include "Review/WorkBlockBuilder.h"
#include "Rules/AttributionEngine.h"
#include "Rules/ExclusionEngine.h"
#include "Store/PersistentReviewStore.h"

namespace stintbook {

namespace {

/// The items that were frozen from segments of which none is recorded any more.
std::set<ReviewedItemID> withoutDetails(const std::vector<ReviewedWorkItem>& items,
                                        const std::vector<ActivitySegment>& recorded)
{
    std::unordered_set<SegmentID> missing;
    for (const auto& item : items) {
        for (const auto& slice : item.slices)
            missing.insert(slice.segmentID);
    }
    for (const auto& segment : recorded)
        missing.erase(segment.id);

    std::set<ReviewedItemID> bare;
    for (const auto& item : items) {
        const auto isMissing = [&](const ReviewedSourceSlice& slice) {
            return missing.contains(slice.segmentID);
        };
        if (!item.slices.empty() && std::ranges::all_of(item.slices, isMissing))
            bare.insert(item.id);
    }
    return bare;
}

/// Reads what else a day consists of, and builds its blocks.
Stored<std::shared_ptr<const LoadedDay>> composed(OpenedStore& store, LoadedDay day,
                                                  const CalendarContext& calendar,
                                                  std::vector<FreeSegment> free)
{
    auto& review = store.review();
    auto& content = day.content;
    day.directory = TRY(ClientBook(store).directory());
    day.approval = TRY(review.approval(content.day));
    content.items = TRY(review.items(content.day));
    day.itemsWithoutDetails = withoutDetails(content.items, *day.recorded);
    const AttributionEngine engine(TRY(review.attributionRules()), day.directory);
    const ExclusionEngine exclusion(TRY(review.exclusionRules()));
    content.blocks = WorkBlockBuilder(calendar, engine, exclusion).blocks(free, day.reviews);
    content.freeSegments = std::move(free);
    return std::make_shared<const LoadedDay>(std::move(day));
}

} // namespace

Stored<std::shared_ptr<const LoadedDay>> loadDay(OpenedStore& store, const LocalDay& day,
                                                 const CalendarContext& calendar)
{
    LoadedDay loaded;
    loaded.content.day = day;
    loaded.content.bounds = calendar.boundsOf(day);
    auto recorded = TRY(recordedDay(store, loaded.content.bounds));
    loaded.summary = daySummary(day, loaded.content.bounds, recorded.segments);
    loaded.recorded = std::make_shared<const std::vector<ActivitySegment>>(std::move(recorded.segments));
    loaded.reviews = std::move(recorded.reviews);
    return composed(store, std::move(loaded), calendar, std::move(recorded.free));
}

Stored<std::shared_ptr<const LoadedDay>> loadDayAgain(OpenedStore& store, const LoadedDay& before,
                                                      const CalendarContext& calendar,
                                                      const ReviewedLayerMutation& done)
{
    LoadedDay loaded;
    loaded.content.day = before.content.day;
    loaded.content.bounds = before.content.bounds;
    loaded.summary = before.summary;
    loaded.recorded = before.recorded;
    loaded.reviews = before.reviews;
    std::vector<SegmentID> edited;
    for (const auto& [id, review] : done.reviewUpserts) {
        loaded.reviews.erase(id);
        edited.push_back(id);
    }
    loaded.reviews.merge(TRY(store.review().reviews(edited)));
    auto free = freeSegments(*loaded.recorded, loaded.content.bounds,
                             TRY(store.review().items(loaded.content.bounds)));
    return composed(store, std::move(loaded), calendar, std::move(free));
}

std::shared_ptr<const LoadedDay> DayMemory::recall(const LocalDay& day, const CalendarContext& calendar,
                                                   std::int64_t dataVersion) const
{
    const bool isSame =
        m_day && m_dataVersion == dataVersion && m_day->content.day == day && m_calendar == calendar;
    return isSame ? m_day : nullptr;
}

void DayMemory::keep(std::shared_ptr<const LoadedDay> day, const CalendarContext& calendar,
                     std::int64_t dataVersion)
{
    m_day = std::move(day);
    m_calendar = calendar;
    m_dataVersion = dataVersion;
}

} // namespace stintbook
