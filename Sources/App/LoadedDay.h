#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <set>
#include <vector>

#include "App/OpenedStore.h"
#include "Domain/AssignmentDirectory.h"
#include "Domain/CalendarContext.h"
#include "Review/DaySummary.h"
#include "Review/ReviewSubject.h"
#include "Review/ReviewedDayApproval.h"
#include "Review/ReviewedLayerMutation.h"
#include "Review/SegmentReview.h"

namespace stintbook {

/// One day as it was stored at one moment, with the blocks that follow from it.
struct LoadedDay {
    ReviewDay content;
    /// All that was recorded of it, whether or not it was reviewed since.
    std::shared_ptr<const std::vector<ActivitySegment>> recorded;
    SegmentReviews reviews;
    DaySummary summary;
    /// Items whose recorded segments were removed.
    std::set<ReviewedItemID> itemsWithoutDetails;
    AssignmentDirectory directory;
    std::optional<ReviewedDayApproval> approval;
};

/// Callers hold the transaction. The calendar is the day's.
Stored<std::shared_ptr<const LoadedDay>> loadDay(OpenedStore& store, const LocalDay& day,
                                                 const CalendarContext& calendar);
/// The same day as the mutation has left it. What was recorded is what it was.
Stored<std::shared_ptr<const LoadedDay>> loadDayAgain(OpenedStore& store, const LoadedDay& before,
                                                      const CalendarContext& calendar,
                                                      const ReviewedLayerMutation& done);

/// The day that was looked at last.
class DayMemory {
public:
    /// Null for any other day, and as soon as anybody has written to the store since.
    std::shared_ptr<const LoadedDay> recall(const LocalDay& day, const CalendarContext& calendar,
                                            std::int64_t dataVersion) const;
    void keep(std::shared_ptr<const LoadedDay> day, const CalendarContext& calendar,
              std::int64_t dataVersion);

private:
    std::shared_ptr<const LoadedDay> m_day;
    std::optional<CalendarContext> m_calendar;
    std::int64_t m_dataVersion = 0;
};

} // namespace stintbook
